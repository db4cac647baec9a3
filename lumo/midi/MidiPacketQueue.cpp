#include "lumo/midi/MidiPacketQueue.h"

namespace lumo
{

MidiPacketQueue::MidiPacketQueue()
{
    for (std::uint32_t i = 0; i < capacity; ++i)
    {
        _slots[i].sequence.store(i, std::memory_order_relaxed);
    }
}

bool MidiPacketQueue::push(const Packet& packet)
{
    std::uint32_t pos = _enqueue.load(std::memory_order_relaxed);
    for (;;)
    {
        Slot& slot = _slots[pos % capacity];
        const std::uint32_t seq = slot.sequence.load(std::memory_order_acquire);
        const auto diff = static_cast<std::int32_t>(seq - pos);
        if (diff == 0)
        {
            // The slot is free in this round: claim it, or learn who did.
            if (_enqueue.compare_exchange_weak(pos, pos + 1, std::memory_order_relaxed))
            {
                slot.packet = packet;
                slot.sequence.store(pos + 1, std::memory_order_release);
                return true;
            }
        }
        else if (diff < 0)
        {
            return false;
        }
        else
        {
            pos = _enqueue.load(std::memory_order_relaxed);
        }
    }
}

bool MidiPacketQueue::pop(Packet& packet)
{
    const std::uint32_t pos = _dequeue.load(std::memory_order_relaxed);
    Slot& slot = _slots[pos % capacity];
    const std::uint32_t seq = slot.sequence.load(std::memory_order_acquire);
    if (static_cast<std::int32_t>(seq - (pos + 1)) < 0)
    {
        return false;
    }
    packet = slot.packet;
    slot.sequence.store(pos + capacity, std::memory_order_release);
    _dequeue.store(pos + 1, std::memory_order_relaxed);
    return true;
}

}  // namespace lumo
