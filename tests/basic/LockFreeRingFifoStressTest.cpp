#include "basic/LockFreeRingFifo.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <thread>

namespace
{

// An element whose fields must arrive together: a torn element shows.
struct Event
{
    std::int32_t status = 0;
    std::int32_t data1 = 0;
    std::int32_t data2 = 0;
    std::int32_t time = 0;
};

Event make_event(std::int32_t seq)
{
    return Event{seq, ~seq, seq * 7, seq ^ 0x5a5a5a5a};
}

bool is_whole(const Event& e)
{
    return e.data1 == ~e.status && e.data2 == e.status * 7 && e.time == (e.status ^ 0x5a5a5a5a);
}

constexpr std::int32_t nbr_events = 2000000;

TEST(LockFreeRingFifoStress, EveryElementArrivesWholeAndInOrderWhenTheProducerWaits)
{
    basic::LockFreeRingFifo<Event> ring(64);
    std::thread producer([&] {
        for (std::int32_t seq = 0; seq < nbr_events; ++seq)
        {
            while (!ring.push(make_event(seq)))
            {
                std::this_thread::yield();
            }
        }
    });
    std::int32_t expected = 0;
    bool all_whole = true;
    Event e;
    while (expected < nbr_events)
    {
        if (!ring.pop(e))
        {
            std::this_thread::yield();
            continue;
        }
        all_whole = all_whole && is_whole(e);
        ASSERT_EQ(e.status, expected);
        ++expected;
    }
    producer.join();
    EXPECT_TRUE(all_whole);
    EXPECT_TRUE(ring.is_empty());
}

TEST(LockFreeRingFifoStress, OnlyPushesIntoAFullRingAreLost)
{
    basic::LockFreeRingFifo<Event> ring(16);
    std::atomic<bool> done{false};
    std::int32_t dropped = 0;
    std::thread producer([&] {
        for (std::int32_t seq = 0; seq < nbr_events; ++seq)
        {
            dropped += ring.push(make_event(seq)) ? 0 : 1;
        }
        done.store(true, std::memory_order_release);
    });
    std::int32_t received = 0;
    std::int32_t last = -1;
    bool in_order = true;
    bool all_whole = true;
    Event e;
    while (true)
    {
        const bool finished = done.load(std::memory_order_acquire);
        while (ring.pop(e))
        {
            in_order = in_order && e.status > last;
            all_whole = all_whole && is_whole(e);
            last = e.status;
            ++received;
        }
        if (finished)
        {
            break;
        }
    }
    producer.join();
    EXPECT_TRUE(in_order);
    EXPECT_TRUE(all_whole);
    EXPECT_EQ(received + dropped, nbr_events);
    EXPECT_GT(received, 0);
}

}  // namespace
