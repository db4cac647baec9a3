#pragma once

#include "ValidationOptions.h"
#include "ValidationReport.h"

#include <ostream>
#include <random>
#include <string>

namespace vsthost
{

class HostedPlugin;
class PluginLibrary;

// Runs the validation suite on one plug-in file and reports every check.
// Where a check fails, the report says what the plug-in answered, so the
// fault can be traced to the plug-in.
class Validator
{
public:
    Validator(const ValidationOptions& options, std::ostream& out);

    // Answers the number of failed checks.
    int run();

private:
    void run_once(PluginLibrary& library);
    void check_lifecycle(PluginLibrary& library);
    void check_programs(HostedPlugin& plugin);
    void check_state(HostedPlugin& plugin);
    void check_chunk_restore(HostedPlugin& plugin, bool preset);
    void check_file_restore(HostedPlugin& plugin, bool bank);
    void check_parameters(HostedPlugin& plugin);
    std::string check_parameter(HostedPlugin& plugin, int index, std::string& note);
    std::string check_text_round_trip(HostedPlugin& plugin, int index, float value);
    std::string check_properties(HostedPlugin& plugin, int index);

    ValidationOptions _options;
    ValidationReport _report;
    std::mt19937 _rng;
};

}  // namespace vsthost
