#include "sys/Clock.h"

#include "sys/ClockOs.h"
#include "sys/ClockPin.h"

namespace sys
{

double get_clock_s()
{
    if (ClockPin::is_active())
    {
        return ClockPin::get_seconds();
    }
    return static_cast<double>(read_os_clock_ms()) * 0.001;
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
