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

// The driver's thread pushes without waiting, as it must; the audio thread
// drains. A small ring overflows often: only the refused pushes may be lost,
// and what arrives is whole and in order.
TEST(LockFreeRingFifoStress, OnlyPushesIntoAFullRingAreLost)
{
    constexpr std::int32_t nbr_events = 2000000;
    basic::LockFreeRingFifo<Event> ring(16);
    std::atomic<bool> done{false};
    std::int32_t dropped = 0;
    std::thread producer([&] {
        for (std::int32_t seq = 0; seq < nbr_events; ++seq)
        {
            dropped += ring.push(Event{seq, ~seq, seq * 7, seq ^ 0x5a5a5a5a}) ? 0 : 1;
        }
        done.store(true, std::memory_order_release);
    });
    std::int32_t received = 0;
    std::int32_t last = -1;
    bool in_order_and_whole = true;
    Event e;
    for (bool finished = false; !finished;)
    {
        finished = done.load(std::memory_order_acquire);
        while (ring.pop(e))
        {
            in_order_and_whole = in_order_and_whole && e.status > last && e.data1 == ~e.status
                              && e.data2 == e.status * 7 && e.time == (e.status ^ 0x5a5a5a5a);
            last = e.status;
            ++received;
        }
    }
    producer.join();
    EXPECT_TRUE(in_order_and_whole);
    EXPECT_EQ(received + dropped, nbr_events);
    EXPECT_GT(received, 0);
}

}  // namespace
