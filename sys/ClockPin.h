#pragma once

#include "sys/Clock.h"

namespace sys
{

// While a ClockPin lives, get_clock_s() and get_local_time() answer the pinned
// values instead of the operating system's. Meant for tests: at most one pin
// at a time, created and destroyed on one thread; the pinned values may be
// read from any thread.
class ClockPin
{
public:
    explicit ClockPin(double seconds = 0.0, const LocalTime& local = LocalTime{});
    ~ClockPin();
    ClockPin(const ClockPin&) = delete;
    ClockPin& operator=(const ClockPin&) = delete;

    void set_seconds(double seconds);
    void advance(double seconds);
    void set_local_time(const LocalTime& local);

    // Read side, used by the clock seam.
    static bool is_active();
    static double get_seconds();
    static LocalTime get_local_time();
};

}  // namespace sys
