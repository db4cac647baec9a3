#include "basic/LockFreeBuffer.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using Buffer = basic::LockFreeBuffer<std::string>;

// A fresh buffer hands out its initial object; after that, each take finds
// the newest publication once.
TEST(LockFreeBuffer, TheNewestPublicationIsTakenOnce)
{
    Buffer buffer;
    buffer.init_slots("initial");
    std::string taken;
    ASSERT_TRUE(buffer.take(taken));
    EXPECT_EQ(taken, "initial");
    for (const char* next : {"b", "c", "d"})
    {
        EXPECT_FALSE(buffer.is_pending());
        buffer.publish("stale");
        buffer.publish(next);
        EXPECT_TRUE(buffer.is_pending());
        ASSERT_TRUE(buffer.take(taken));
        EXPECT_EQ(taken, next);
    }
}

}  // namespace
