#include "lumo/midi/MidiPacketQueue.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <thread>
#include <vector>

namespace
{

using lumo::MidiPacketQueue;

// Three threads echo parameter changes while the audio thread empties the
// queue: nothing is lost, nothing arrives twice or torn, and each producer's
// packets keep their order.
TEST(MidiPacketQueueStress, ThreeProducersOneConsumer)
{
    constexpr int producers = 3;
    constexpr int per_producer = 200000;
    MidiPacketQueue queue;
    std::atomic<int> running{producers};
    std::vector<std::thread> threads;
    for (int p = 0; p < producers; ++p)
    {
        // Byte 0 names the producer, bytes 1 to 3 carry its sequence number. A
        // full queue refuses; this producer waits its turn, so that every
        // packet must arrive.
        threads.emplace_back([&, p] {
            const auto byte = [](int v) { return static_cast<std::uint8_t>(v); };
            for (int n = 0; n < per_producer; ++n)
            {
                while (!queue.push({{byte(p), byte(n), byte(n >> 8), byte(n >> 16)}}))
                {
                    std::this_thread::yield();
                }
            }
            running.fetch_sub(1);
        });
    }
    // Each producer's packets arrive once, whole and in order: its numbers
    // count up without a gap.
    std::array<int, producers> next{};
    bool in_order = true;
    MidiPacketQueue::Packet packet{};
    for (bool finished = false; !finished;)
    {
        finished = running.load() == 0;
        while (queue.pop(packet))
        {
            const auto p = static_cast<std::size_t>(packet.bytes[0] % producers);
            in_order = in_order && packet.bytes[0] < producers
                    && (packet.bytes[1] | packet.bytes[2] << 8 | packet.bytes[3] << 16) == next[p]++;
        }
        std::this_thread::yield();
    }
    for (std::thread& t : threads)
    {
        t.join();
    }
    EXPECT_TRUE(in_order);
    EXPECT_EQ(next, (std::array<int, producers>{per_producer, per_producer, per_producer}));
}

TEST(MidiPacketQueueStress, A1025thPacketIsRefusedUntilOneIsTaken)
{
    MidiPacketQueue queue;
    for (int n = 0; n < MidiPacketQueue::capacity; ++n)
    {
        ASSERT_TRUE(queue.push({{0xB0, 7, static_cast<std::uint8_t>(n & 127), 0}}));
    }
    EXPECT_FALSE(queue.push({{0xB0, 8, 0, 0}}));
    MidiPacketQueue::Packet packet{};
    ASSERT_TRUE(queue.pop(packet));
    EXPECT_EQ(packet.bytes[2], 0);
    EXPECT_TRUE(queue.push({{0xB0, 8, 0, 0}}));
}

}  // namespace
