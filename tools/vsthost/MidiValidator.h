#pragma once

#include "MidiEventBlock.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace vsthost
{

class AudioValidator;
class HostedPlugin;
class ValidationReport;
struct ValidationOptions;

// The checks for plug-ins that take or send MIDI: every controller and NRPN
// on every channel while processing, junk that hosts and cables do deliver,
// a flood of events at every frame, allocations while MIDI arrives, and the
// form of whatever the plug-in sends back. The output of every block must
// stay free of NaN, infinity and subnormals.
class MidiValidator
{
public:
    MidiValidator(HostedPlugin& plugin, AudioValidator& audio, const ValidationOptions& options,
                  ValidationReport& report, std::mt19937& rng);

    // For plug-ins that take MIDI (a skip line for the others).
    void check_input();
    // For plug-ins that send MIDI: every event they sent since they were
    // opened was well formed.
    void check_output();

private:
    using Message = std::array<std::uint8_t, 3>;

    void check_controllers();
    void check_nrpns();
    void check_bad_data_bytes();
    void check_missing_status();
    void check_foreign_events();
    void check_offsets_outside_block();
    void check_oversized_lists();
    void check_broken_lists();
    void check_flood();
    void check_allocations();

    // Plays total messages made by make(i), per_block of them spread evenly
    // over each block; "" or the first fault of the output.
    std::string play_stream(std::size_t total, std::size_t per_block, const std::function<Message(std::size_t)>& make);
    // Hands the prepared block to the plug-in and processes one block of noise.
    std::string play_block(int frames);
    void expect_clean(const std::string& check, const std::string& fault, const std::string& detail);
    Message random_message();

    HostedPlugin& _plugin;
    AudioValidator& _audio;
    const ValidationOptions& _options;
    ValidationReport& _report;
    std::mt19937& _rng;
    MidiEventBlock _block;
    std::vector<lumo::vst2::Event> _foreign;        // records of other types than MIDI
    std::vector<lumo::vst2::MidiSysexEvent> _sysex;
    std::vector<char> _sysex_bytes;
};

}  // namespace vsthost
