#include "sys/TickUnwrap.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <thread>

namespace
{

// The audio thread, the editor's timers and the host's threads all read the
// clock. Here each thread reads a shared tick that runs through its wrap;
// every thread must see a clock that never goes back, and the wrap counted once.
TEST(TickUnwrapStress, ThreadsReadingAcrossTheWrapNeverSeeTimeGoBack)
{
    sys::TickUnwrap unwrap;
    std::atomic<std::uint32_t> tick{0xffff0000u};
    constexpr int steps = 200000;
    std::atomic<int> backwards{0};
    auto reader = [&] {
        std::uint64_t last = 0;
        for (int i = 0; i < steps; ++i)
        {
            const std::uint64_t now = unwrap.extend(tick.fetch_add(1) + 1);
            backwards.fetch_add(now < last ? 1 : 0);
            last = now;
        }
    };
    std::thread first(reader);
    std::thread second(reader);
    reader();
    first.join();
    second.join();
    EXPECT_EQ(backwards.load(), 0);
    EXPECT_EQ(unwrap.extend(tick.load()), std::uint64_t{0xffff0000u} + 3 * steps);
}

}  // namespace
