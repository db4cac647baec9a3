#include "TestGainMidi.h"

#include <algorithm>
#include <cmath>

namespace testgain
{

namespace
{

constexpr int cc_volume = 7;
constexpr int cc_expression = 11;

#ifdef TESTGAIN_BROKEN_MIDI
constexpr bool broken = true;
#else
constexpr bool broken = false;
#endif

// The fault of the broken build: a data byte read as a signed char.
int read_data(char byte)
{
    return broken ? static_cast<signed char>(byte) : static_cast<unsigned char>(byte);
}

}  // namespace

void TestGainMidi::reset()
{
    _count = 0;
    _expression = 1.0f;
}

bool TestGainMidi::accept(const lumo::vst2::MidiEvent& e) const
{
    if (broken)
    {
        return true;
    }
    const auto status = static_cast<unsigned char>(e.midi_data[0]);
    const bool data_ok = static_cast<unsigned char>(e.midi_data[1]) < 0x80
                         && static_cast<unsigned char>(e.midi_data[2]) < 0x80;
    // Channel messages only; SysEx and system messages are not for this plug-in.
    return status >= 0x80 && status < 0xF0 && data_ok && e.delta_frames >= 0;
}

void TestGainMidi::receive(const lumo::vst2::Events* events)
{
    // A host may hand over nothing, a negative count or more events than
    // fit: the extra ones are ignored.
    if (events == nullptr)
    {
        return;
    }
    for (std::int32_t i = 0; i < events->num_events && _count < capacity; ++i)
    {
        const lumo::vst2::Event* event = events->events[i];
        if (event == nullptr || event->type != lumo::vst2::event_types::midi)
        {
            continue;
        }
        const auto& midi = *reinterpret_cast<const lumo::vst2::MidiEvent*>(event);
        if (accept(midi))
        {
            _pending[_count++] = midi;
        }
    }
    // Hosts deliver events in order, so an insertion sort has little to do;
    // unlike the library's stable sort it takes no memory on the audio thread.
    for (std::size_t i = 1; i < _count; ++i)
    {
        const lumo::vst2::MidiEvent e = _pending[i];
        std::size_t j = i;
        for (; j > 0 && _pending[j - 1].delta_frames > e.delta_frames; --j)
        {
            _pending[j] = _pending[j - 1];
        }
        _pending[j] = e;
    }
}

float TestGainMidi::apply(std::size_t i)
{
    const lumo::vst2::MidiEvent& e = _pending[i];
    if ((static_cast<unsigned char>(e.midi_data[0]) & 0xF0) != 0xB0)
    {
        return -1.0f;
    }
    const int controller = read_data(e.midi_data[1]);
    const float value = static_cast<float>(read_data(e.midi_data[2])) / 127.0f;
    if (controller == cc_expression)
    {
        _expression = std::sqrt(value);
    }
    return controller == cc_volume ? value : -1.0f;
}

void TestGainMidi::finish_block(lumo::vst2::AEffect* effect, lumo::vst2::HostCallback host, std::int32_t frames)
{
    _echo.clear();
    for (std::size_t i = 0; i < _count && frames > 0; ++i)
    {
        const lumo::vst2::MidiEvent& e = _pending[i];
        // An event the host placed beyond the block was applied at its end,
        // and is echoed there.
        // (The broken build's sum wraps rather than overflows: its fault is
        // the offset, not undefined behaviour.)
        const auto late = static_cast<std::uint32_t>(e.delta_frames) + static_cast<std::uint32_t>(frames);
        const std::int32_t offset = broken ? static_cast<std::int32_t>(late) : std::min(e.delta_frames, frames - 1);
        _echo.add(offset, static_cast<std::uint8_t>(e.midi_data[0]), static_cast<std::uint8_t>(e.midi_data[1]),
                  static_cast<std::uint8_t>(e.midi_data[2]));
    }
    _count = 0;
    if (host != nullptr && _echo.get_count() > 0)
    {
        host(effect, static_cast<std::int32_t>(lumo::vst2::HostOp::process_events), 0, 0, _echo.use_events(), 0.0f);
    }
}

}  // namespace testgain
