#pragma once

#include <array>
#include <atomic>
#include <cstdint>

namespace lumo
{

// Packets of up to four MIDI bytes on their way from any thread that changes
// a parameter (host, editor, audio) to the audio thread, which hands them to
// the host at the next block start. Several producers, one consumer, fixed
// capacity, no lock and no allocation: each slot carries a sequence number
// that tells whose turn it is (the bounded queue of Vyukov).
class MidiPacketQueue
{
public:
    static constexpr int capacity = 1024;

    struct Packet
    {
        std::uint8_t bytes[4];
    };

    MidiPacketQueue();

    // Any thread; false when the queue is full (the packet is lost).
    bool push(const Packet& packet);
    // The consumer only; false when empty.
    bool pop(Packet& packet);

private:
    struct Slot
    {
        std::atomic<std::uint32_t> sequence{0};
        Packet packet{};
    };

    std::array<Slot, capacity> _slots;
    std::atomic<std::uint32_t> _enqueue{0};
    std::atomic<std::uint32_t> _dequeue{0};
};

}  // namespace lumo
