#include "basic/LockFreeBuffer.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using Buffer = basic::LockFreeBuffer<std::string>;

TEST(LockFreeBuffer, AFreshBufferIsPendingWithTheInitialObject)
{
    Buffer buffer;
    buffer.init_slots("initial");
    EXPECT_TRUE(buffer.is_pending());
    std::string taken;
    ASSERT_TRUE(buffer.take(taken));
    EXPECT_EQ(taken, "initial");
    EXPECT_FALSE(buffer.is_pending());
}

TEST(LockFreeBuffer, TheNewestPublicationWins)
{
    Buffer buffer;
    buffer.init_slots("initial");
    buffer.publish("first");
    buffer.publish("second");
    std::string taken;
    ASSERT_TRUE(buffer.take(taken));
    EXPECT_EQ(taken, "second");
}

TEST(LockFreeBuffer, APublicationAfterATakeIsPendingAgainAndLeavesTheTakenSlot)
{
    Buffer buffer;
    buffer.init_slots("initial");
    std::string taken;
    buffer.publish("a");
    ASSERT_TRUE(buffer.take(taken));
    for (const char* next : {"b", "c", "d"})
    {
        EXPECT_FALSE(buffer.is_pending());
        buffer.publish(next);
        EXPECT_TRUE(buffer.is_pending());
        ASSERT_TRUE(buffer.take(taken));
        EXPECT_EQ(taken, next);
    }
}

}  // namespace
