#pragma once

#include "lumo/midi/MidiOut4BPacketMixin.h"
#include "lumo/midi/MidiPacketQueue.h"
#include "lumo/vst2/Vst2Abi.h"
#include "lumo/vst2/Vst2Component.h"

#include <array>
#include <atomic>
#include <cstdint>

namespace lumo
{

// MIDI to the host: packets gathered since the last block are handed to the
// host as one event list at the start of the next block. Two lists take
// turns, so the list the host was given stays untouched for a whole block.
class Vst2MidiOut : public MidiOut4BPacketMixin, public Vst2Component
{
public:
    static constexpr int capacity = MidiPacketQueue::capacity;

    int activate() override;
    int deactivate() override { return 0; }
    int open() override;
    int close() override;
    // Audio thread.
    int block_start() override;
    // Any thread; 0 when this block's 1024 packets are already gathered.
    int send_packet(int b1, int b2, int b3, int b4) override;
    void connect_adapter(Vst2Plugin* adapter, MidiMgr* mgr) override;

    bool is_active() const { return _active.load(std::memory_order_acquire); }

private:
    // The host's event block with room for every event of a list.
    struct EventBlock
    {
        std::int32_t num_events;
        std::intptr_t reserved;
        vst2::Event* events[capacity];
    };
    struct List
    {
        std::array<vst2::MidiEvent, capacity> events;
        EventBlock block;
    };

    void fill(List& list);

    Vst2Plugin* _adapter = nullptr;
    MidiPacketQueue _queue;
    std::array<List, 2> _lists{};
    int _current = 0;
    std::atomic<bool> _active{false};
};

}  // namespace lumo
