#pragma once

#include "lumo/midi/MidiOut4BPacketMixin.h"
#include "lumo/midi/MidiPacketQueue.h"

#include <atomic>
#include <cstdint>

namespace lumo
{

class Lv2SequenceWriter;

// MIDI to the host: packets gathered from any thread wait in a queue and go
// into the host's output sequence at the start of the next block, as the
// VST 2 output hands them over. What does not fit waits for the block after.
class Lv2MidiOut : public MidiOut4BPacketMixin
{
public:
    int activate() override;
    int deactivate() override { return 0; }
    int open() override;
    int close() override;
    int block_start() override { return 0; }
    // Any thread; 0 when the queue is full (the packet is lost).
    int send_packet(int b1, int b2, int b3, int b4) override;

    bool is_active() const { return _active.load(std::memory_order_acquire); }
    // Audio thread: moves waiting packets into out as MIDI events of type
    // midi_event at frame 0, while they fit; packets that are not MIDI
    // messages of a known length are dropped, and so is everything when the
    // host gave no buffer.
    void drain(Lv2SequenceWriter& out, std::uint32_t midi_event);

private:
    MidiPacketQueue _queue;
    std::atomic<bool> _active{false};
};

}  // namespace lumo
