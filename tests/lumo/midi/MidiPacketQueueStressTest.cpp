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
        threads.emplace_back([&, p] {
            for (int n = 0; n < per_producer; ++n)
            {
                // Bytes 1..3 carry the sequence number, byte 0 the producer,
                // the way a packet carries status and data.
                const MidiPacketQueue::Packet packet{{static_cast<std::uint8_t>(p), static_cast<std::uint8_t>(n),
                                                      static_cast<std::uint8_t>(n >> 8),
                                                      static_cast<std::uint8_t>(n >> 16)}};
                // A full queue refuses; this producer waits its turn, so
                // that every packet must arrive.
                while (!queue.push(packet))
                {
                    std::this_thread::yield();
                }
            }
            running.fetch_sub(1);
        });
    }
    std::array<int, producers> last{-1, -1, -1};
    std::array<int, producers> received{};
    MidiPacketQueue::Packet packet{};
    for (;;)
    {
        const bool finished = running.load() == 0;
        while (queue.pop(packet))
        {
            ASSERT_LT(packet.bytes[0], producers);
            const auto p = static_cast<std::size_t>(packet.bytes[0]);
            const int n = packet.bytes[1] | packet.bytes[2] << 8 | packet.bytes[3] << 16;
            ASSERT_GT(n, last[p]);
            last[p] = n;
            ++received[p];
        }
        if (finished)
        {
            break;
        }
        std::this_thread::yield();
    }
    for (std::thread& t : threads)
    {
        t.join();
    }
    for (std::size_t p = 0; p < producers; ++p)
    {
        EXPECT_EQ(received[p], per_producer);
    }
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
