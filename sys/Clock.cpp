#include "sys/Clock.h"

#include "sys/ClockOs.h"
#include "sys/ClockPin.h"
#include "sys/TickPin.h"

namespace sys
{

TickUnwrap& use_tick_unwrap()
{
    static TickUnwrap unwrap;
    return unwrap;
}

double get_clock_s()
{
    if (TickPin::is_active())
    {
        return static_cast<double>(use_tick_unwrap().extend(TickPin::get_tick())) * 0.001;
    }
    if (ClockPin::is_active())
    {
        return ClockPin::get_seconds();
    }
    return static_cast<double>(use_tick_unwrap().extend(read_os_clock_ms())) * 0.001;
}

LocalTime get_local_time()
{
    if (ClockPin::is_active())
    {
        return ClockPin::get_local_time();
    }
    return read_os_local_time();
}

}  // namespace sys
