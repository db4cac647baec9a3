#include "basic/LockFreeRingFifo.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace
{

struct Event
{
    int status = 0;
    int data1 = 0;
    int data2 = 0;
    int time = 0;
};

TEST(LockFreeRingFifo, HoldsOneLessThanItsCapacityAndDropsTheRest)
{
    basic::LockFreeRingFifo<Event> ring(4000);
    for (int i = 0; i < 3999; ++i)
    {
        EXPECT_TRUE(ring.push(Event{0x90, i & 127, i >> 7, i}));
    }
    EXPECT_FALSE(ring.push(Event{0xB0, 1, 2, 99999}));
    Event e;
    for (int i = 0; i < 3999; ++i)
    {
        ASSERT_TRUE(ring.pop(e));
        EXPECT_EQ(e.time, i);
        EXPECT_EQ(e.data1, i & 127);
    }
    EXPECT_TRUE(ring.is_empty());
    EXPECT_FALSE(ring.pop(e));
    EXPECT_EQ(e.time, 3998);  // an empty pop leaves the target alone
}

TEST(LockFreeRingFifo, IndicesWrapAndOrderIsKept)
{
    basic::LockFreeRingFifo<int> ring(3);
    int next_in = 0;
    int next_out = 0;
    for (int round = 0; round < 50; ++round)
    {
        const int burst = round % 3;
        for (int i = 0; i < burst; ++i)
        {
            ring.push(next_in++);
        }
        int v = -1;
        while (ring.pop(v))
        {
            EXPECT_EQ(v, next_out++);
        }
    }
    EXPECT_EQ(next_out, next_in);
}

TEST(LockFreeRingFifo, ARingOfOneSlotHoldsNothingAndNoSlotsAreRefused)
{
    basic::LockFreeRingFifo<int> one(1);
    EXPECT_FALSE(one.push(1));
    EXPECT_TRUE(one.is_empty());
    EXPECT_THROW(basic::LockFreeRingFifo<int>(0), std::runtime_error);
}

}  // namespace
