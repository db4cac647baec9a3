#pragma once

#include <cstdint>

namespace sys
{

// Local calendar date and time of day, as the user's wall clock shows it.
struct LocalTime
{
    int year = 1970;
    int month = 1;   // 1..12
    int day = 1;     // 1..31
    int hour = 0;    // 0..23
    int minute = 0;  // 0..59
    int second = 0;  // 0..60
};

// The one place that reads time. Everything that needs the millisecond clock
// (priority hold times, GUI timers) or the calendar (lunch break, sample set)
// asks here, so that tests can pin both through ClockPin.

// The operating system's millisecond clock times 0.001: seconds, arbitrary
// origin. The 32-bit tick is unwrapped, so the reading never goes backwards.
double get_clock_s();

// The local date and time of day.
LocalTime get_local_time();

}  // namespace sys
