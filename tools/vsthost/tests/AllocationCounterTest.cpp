#include "tools/vsthost/AllocationCounter.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>

namespace
{

using vsthost::AllocationCounter;

TEST(AllocationCounter, CountsOnlyTheOpenThread)
{
    if (!AllocationCounter::is_supported())
    {
        GTEST_SKIP() << "no counting in this build";
    }
    AllocationCounter::open();
    auto one = std::make_unique<int>(1);
    std::vector<double> two(100);
    std::thread other([] { auto elsewhere = std::make_unique<long>(2); });
    other.join();
    const long counted = AllocationCounter::close();
    // The thread object itself may allocate its state on this thread.
    EXPECT_GE(counted, 2);
    EXPECT_LE(counted, 3);
    auto after = std::make_unique<int>(3);
    AllocationCounter::open();
    EXPECT_EQ(AllocationCounter::close(), 0);
}

}  // namespace
