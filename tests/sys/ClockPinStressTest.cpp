#include "sys/Clock.h"
#include "sys/ClockPin.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace
{

// The audio thread reads the pinned clock while a test moves it: every read
// must be a whole calendar value that was once written, never a mix.
TEST(ClockPinStress, ReadersSeeWholeValuesWhileTheTestMovesTheClock)
{
    sys::ClockPin pin(0.0, sys::LocalTime{2026, 1, 1, 0, 0, 0});
    std::atomic<bool> done{false};
    std::atomic<int> torn{0};

    std::thread reader([&] {
        double last = 0.0;
        while (!done.load(std::memory_order_acquire))
        {
            const double s = sys::get_clock_s();
            const sys::LocalTime t = sys::get_local_time();
            // Written together below: minute always equals hour, day is hour + 1.
            if (t.minute != t.hour || t.day != t.hour + 1 || s < last)
            {
                torn.fetch_add(1);
            }
            last = s;
        }
    });

    for (int i = 0; i < 200000; ++i)
    {
        const int h = i % 24;
        pin.set_local_time(sys::LocalTime{2026, 1, h + 1, h, h, 0});
        pin.advance(0.001);
    }
    done.store(true, std::memory_order_release);
    reader.join();
    EXPECT_EQ(torn.load(), 0);
}

}  // namespace
