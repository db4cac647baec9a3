#include "sys/Clock.h"
#include "sys/ClockPin.h"

#include <gtest/gtest.h>

namespace
{

TEST(Clock, OsClockAdvancesInMilliseconds)
{
    const double a = sys::get_clock_s();
    double b = a;
    // Spin until the millisecond timer ticks; it must move forward by a small step.
    for (int i = 0; i < 100000000 && b == a; ++i)
    {
        b = sys::get_clock_s();
    }
    EXPECT_GT(b, a);
    EXPECT_LT(b - a, 1.0);
}

TEST(ClockPin, PinsBothClocksAndReleasesThem)
{
    {
        sys::ClockPin pin(1234.5, sys::LocalTime{2026, 11, 8, 12, 30, 15});
        EXPECT_DOUBLE_EQ(sys::get_clock_s(), 1234.5);
        pin.advance(0.25);
        EXPECT_DOUBLE_EQ(sys::get_clock_s(), 1234.75);

        sys::LocalTime t = sys::get_local_time();
        EXPECT_EQ(t.day * 10000 + t.hour * 100 + t.minute, 81230);

        pin.set_local_time(sys::LocalTime{1999, 12, 31, 23, 59, 60});
        t = sys::get_local_time();
        EXPECT_EQ(t.year, 1999);
        EXPECT_EQ(t.second, 60);
    }
    EXPECT_NE(sys::get_clock_s(), 1234.75);
    EXPECT_NE(sys::get_local_time().year, 1999);
}

}  // namespace
