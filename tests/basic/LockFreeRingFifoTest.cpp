#include "basic/LockFreeRingFifo.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace
{

TEST(LockFreeRingFifo, HoldsOneLessThanItsCapacityAndDropsTheRest)
{
    basic::LockFreeRingFifo<int> ring(4000);
    for (int i = 0; i < 3999; ++i)
    {
        EXPECT_TRUE(ring.push(i));
    }
    EXPECT_FALSE(ring.push(99999));
    int e = -1;
    for (int i = 0; i < 3999; ++i)
    {
        ASSERT_TRUE(ring.pop(e));
        EXPECT_EQ(e, i);
    }
    EXPECT_TRUE(ring.is_empty());
    EXPECT_FALSE(ring.pop(e));
    EXPECT_EQ(e, 3998);  // an empty pop leaves the target alone

    basic::LockFreeRingFifo<int> one(1);
    EXPECT_FALSE(one.push(1));
    EXPECT_TRUE(one.is_empty());
    EXPECT_THROW(basic::LockFreeRingFifo<int>(0), std::runtime_error);
}

TEST(LockFreeRingFifo, IndicesWrapAndOrderIsKept)
{
    basic::LockFreeRingFifo<int> ring(3);
    int next_in = 0;
    int next_out = 0;
    for (int round = 0; round < 50; ++round)
    {
        for (int i = 0; i < round % 3; ++i)
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

}  // namespace
