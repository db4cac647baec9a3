#pragma once

#include "lumo/vst2/Vst2Abi.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vsthost
{

// One MIDI event a plug-in handed to the host, as it came.
struct SentMidiEvent
{
    std::int32_t delta_frames = 0;
    std::array<std::uint8_t, 3> bytes{};
};

// Takes the events a plug-in sends to the host while it processes a block,
// keeps the well-formed MIDI events of the block and remembers the first
// malformed one. Taking runs on the processing thread inside the plug-in's
// call, so it never allocates: the storage is fixed at construction and
// what does not fit is counted as dropped.
class MidiOutCollector
{
public:
    static constexpr std::size_t capacity = 8192;
    // A count above this is taken as garbage rather than read: no block of a
    // real plug-in comes near it, and reading that many pointers would run
    // past any array the plug-in really has.
    static constexpr std::int32_t max_plausible_count = 1 << 16;

    MidiOutCollector();

    // Before each processing call: the block's frame count, and empties the block.
    void begin_block(std::int32_t frames);
    // The host callback's answer to an events block from the plug-in.
    std::intptr_t take(const lumo::vst2::Events* events);

    const std::vector<SentMidiEvent>& get_events() const { return _events; }
    std::size_t get_count() const { return _count; }
    // Over the whole life of the collector.
    long get_total() const { return _total; }
    long get_dropped() const { return _dropped; }
    long get_malformed() const { return _malformed; }
    // "" while every event was well formed; else what was wrong with the first one that was not.
    std::string describe_first_problem() const;

private:
    enum class Problem
    {
        none,
        null_block,
        bad_count,
        null_event,
        unknown_type,
        bad_byte_size,
        delta_outside_block,
        bad_status,
        bad_data,
        bad_sysex,
    };

    void take_event(const lumo::vst2::Event* event);
    Problem check_midi(const lumo::vst2::MidiEvent& e) const;
    void note(Problem problem, std::int32_t value);

    std::vector<SentMidiEvent> _events;
    std::size_t _count = 0;
    std::int32_t _frames = 0;
    long _total = 0;
    long _dropped = 0;
    long _malformed = 0;
    Problem _first_problem = Problem::none;
    std::int32_t _first_problem_value = 0;
};

}  // namespace vsthost
