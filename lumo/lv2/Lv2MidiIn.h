#pragma once

#include "lumo/midi/MidiInCcMixin.h"

#include <atomic>
#include <cstdint>

namespace lumo
{

// MIDI from the host's input sequence, parsed at each event's frame.
class Lv2MidiIn : public MidiInCcMixin
{
public:
    int activate() override { return reset_channels(); }
    int deactivate() override;
    int open() override;
    int close() override;
    int block_start() override { return 0; }

    bool is_active() const { return _active.load(std::memory_order_acquire); }
    // One MIDI event of size bytes at frame of the block. Only complete
    // channel messages are parsed: system messages (SysEx among them) and
    // events shorter than their status needs are skipped.
    void process_event(const std::uint8_t* bytes, std::uint32_t size, int frame);

private:
    std::atomic<bool> _active{false};
};

}  // namespace lumo
