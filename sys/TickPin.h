#pragma once

#include <cstdint>

namespace sys
{

// While a TickPin lives, get_clock_s() reads the pinned 32-bit millisecond
// tick instead of the operating system's, through the same unwrapping, so a
// test can drive the clock across the tick's wrap. It takes precedence over
// a ClockPin's seconds (a ClockPin still pins the calendar). Meant for tests:
// at most one at a time, created and destroyed on one thread.
class TickPin
{
public:
    explicit TickPin(std::uint32_t tick);
    ~TickPin();
    TickPin(const TickPin&) = delete;
    TickPin& operator=(const TickPin&) = delete;

    void set_tick(std::uint32_t tick);
    // Moves the tick on by ms, wrapping like the operating system's.
    void advance_ms(std::uint32_t ms);

    // Read side, used by the clock seam.
    static bool is_active();
    static std::uint32_t get_tick();
};

}  // namespace sys
