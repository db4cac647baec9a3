#include "sys/Clock.h"
#include "sys/ClockPin.h"
#include "sys/TickPin.h"
#include "sys/TickUnwrap.h"

#include <gtest/gtest.h>

#include <cstdint>

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

constexpr std::uint64_t wrap = std::uint64_t{1} << 32;

TEST(TickUnwrap, KeepsTheRawTickUntilTheWrapThenCountsOn)
{
    sys::TickUnwrap unwrap;
    // Before any wrap the value is the raw tick itself, even for a first
    // reading late in the tick's range.
    EXPECT_EQ(unwrap.extend(0xfffff000u), 0xfffff000u);
    EXPECT_EQ(unwrap.extend(0xffffffffu), 0xffffffffu);
    EXPECT_EQ(unwrap.extend(0u), wrap);
    EXPECT_EQ(unwrap.extend(1234u), wrap + 1234u);
    // A second wrap, taken in large steps of a busy plug-in's rare readings.
    EXPECT_EQ(unwrap.extend(0x80000000u), wrap + 0x80000000u);
    EXPECT_EQ(unwrap.extend(0xf0000000u), wrap + 0xf0000000u);
    EXPECT_EQ(unwrap.extend(0x10000000u), 2 * wrap + 0x10000000u);

    // A thread that read 5000 before another stored 5001 gets 5001, not a wrap
    // to the next round and not an earlier time.
    unwrap.restart();
    EXPECT_EQ(unwrap.extend(5001u), 5001u);
    EXPECT_EQ(unwrap.extend(5000u), 5001u);
    EXPECT_EQ(unwrap.extend(5002u), 5002u);
}

TEST(TickUnwrap, TheClockSeamRunsOnAcrossThePinnedTicksWrap)
{
    // A ClockPin's seconds give way to the pinned tick; its calendar stays.
    sys::ClockPin calendar(7.0, sys::LocalTime{2026, 3, 1, 9, 0, 0});
    sys::TickPin tick(0xffffff00u);
    EXPECT_DOUBLE_EQ(sys::get_clock_s(), 0xffffff00u * 0.001);
    tick.advance_ms(0x200u);
    EXPECT_EQ(sys::TickPin::get_tick(), 0x100u);
    EXPECT_DOUBLE_EQ(sys::get_clock_s(), static_cast<double>(wrap + 0x100u) * 0.001);
    EXPECT_EQ(sys::get_local_time().hour, 9);
}

}  // namespace
