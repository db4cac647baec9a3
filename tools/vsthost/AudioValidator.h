#pragma once

#include "AudioBuffers.h"
#include "ValidationOptions.h"

#include <random>
#include <string>

namespace vsthost
{

class HostedPlugin;
class ValidationReport;

// The checks that run audio: every rate and block size, changes of both
// while resumed, blocks larger than announced, automation between small
// blocks, parameters and chunks from other threads while processing, and
// allocations on the processing thread.
class AudioValidator
{
public:
    AudioValidator(HostedPlugin& plugin, const ValidationOptions& options, ValidationReport& report,
                   std::mt19937& rng);

    void check_rates_and_blocks();
    void check_changes_while_resumed();
    void check_oversized_blocks();
    void check_automation();
    void check_threads();
    void check_allocations();

    // Suspends, sets the rate and the announced block size, resumes.
    void prepare(double rate, int block);
    // count blocks of noise; answers "" or the first fault in the output.
    std::string process_noise(int frames, int count);

private:
    void fill_noise(int frames);
    std::string scan_output(int frames);

    HostedPlugin& _plugin;
    const ValidationOptions& _options;
    ValidationReport& _report;
    std::mt19937& _rng;
    AudioBuffers _in;
    AudioBuffers _out;
};

}  // namespace vsthost
