#pragma once

#include "lumo/vst2/Vst2Abi.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

namespace vsthost
{

// An events block of the interface with room for a fixed number of MIDI
// events, all storage taken at construction so that filling and handing it
// over never allocates (it is filled on audio threads). The interface's
// record declares two event pointers; the pointer array really continues for
// as many events as the block holds.
class MidiEventBlock
{
public:
    explicit MidiEventBlock(std::size_t capacity)
        : _events(capacity),
          _memory(offsetof(lumo::vst2::Events, events) + std::max<std::size_t>(capacity, 2) * sizeof(void*))
    {
        _block = new (_memory.data()) lumo::vst2::Events{};
    }
    MidiEventBlock(const MidiEventBlock&) = delete;
    MidiEventBlock& operator=(const MidiEventBlock&) = delete;

    void clear() { _block->num_events = 0; }
    std::size_t get_capacity() const { return _events.size(); }
    std::size_t get_count() const { return static_cast<std::size_t>(_block->num_events); }
    bool is_full() const { return get_count() == get_capacity(); }

    // Appends one MIDI event; false (and nothing stored) when the block is full.
    bool add(std::int32_t delta_frames, std::uint8_t status, std::uint8_t data1, std::uint8_t data2)
    {
        if (is_full())
        {
            return false;
        }
        lumo::vst2::MidiEvent& e = _events[get_count()];
        e = lumo::vst2::MidiEvent{};
        e.type = lumo::vst2::event_types::midi;
        e.byte_size = sizeof(lumo::vst2::MidiEvent);
        e.delta_frames = delta_frames;
        e.midi_data[0] = static_cast<char>(status);
        e.midi_data[1] = static_cast<char>(data1);
        e.midi_data[2] = static_cast<char>(data2);
        return add_raw(reinterpret_cast<lumo::vst2::Event*>(&e));
    }

    // Appends any event record, which must outlive the block's use; for
    // hosts that hand over more than MIDI.
    bool add_raw(lumo::vst2::Event* event)
    {
        if (is_full())
        {
            return false;
        }
        use_pointers()[get_count()] = event;
        ++_block->num_events;
        return true;
    }

    lumo::vst2::Events* use_events() { return _block; }

private:
    lumo::vst2::Event** use_pointers()
    {
        return reinterpret_cast<lumo::vst2::Event**>(_memory.data() + offsetof(lumo::vst2::Events, events));
    }

    std::vector<lumo::vst2::MidiEvent> _events;
    std::vector<std::uint8_t> _memory;  // the record and its pointer array
    lumo::vst2::Events* _block = nullptr;
};

}  // namespace vsthost
