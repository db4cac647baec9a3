#pragma once

#include "tools/vsthost/MidiEventBlock.h"
#include "lumo/vst2/Vst2Abi.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace testgain
{

// The test plug-in's MIDI: it keeps the channel messages the host delivers
// for the next block, applies them at their offsets while the block is
// processed, and echoes each one back to the host at the same offset.
// Controller 7 on any channel drives "Gain"; controller 11 (expression)
// scales the output by the square root of its value. Nothing allocates
// after construction: the host calls all of this on its audio thread.
//
// Built with TESTGAIN_BROKEN_MIDI it is a deliberately faulty MIDI plug-in for
// the host's validation: it reads data bytes as signed and unchecked (junk
// gives a NaN expression), keeps events without a status byte, and echoes
// everything one block late (offsets beyond the block).
class TestGainMidi
{
public:
    static constexpr std::size_t capacity = 1024;

    TestGainMidi() : _echo(capacity) {}

    void receive(const lumo::vst2::Events* events);
    // At resume: no events pending, full expression.
    void reset();
    // Events due in this block, by offset; apply() each before rendering from its offset on.
    std::size_t get_count() const { return _count; }
    std::int32_t get_offset(std::size_t i) const { return _pending[i].delta_frames; }
    // Applies event i: answers the new normalized gain, or a negative number
    // when the event does not change the gain.
    float apply(std::size_t i);
    float get_expression() const { return _expression; }
    // After the block: echoes the block's events to the host and forgets them.
    void finish_block(lumo::vst2::AEffect* effect, lumo::vst2::HostCallback host, std::int32_t frames);

private:
    bool accept(const lumo::vst2::MidiEvent& e) const;

    std::array<lumo::vst2::MidiEvent, capacity> _pending{};
    std::size_t _count = 0;
    float _expression = 1.0f;
    vsthost::MidiEventBlock _echo;
};

}  // namespace testgain
