#include "sys/ClockOs.h"

#include <windows.h>
#include <mmsystem.h>

#include <ctime>

namespace sys
{

std::uint32_t read_os_clock_ms()
{
    return ::timeGetTime();
}

LocalTime read_os_local_time()
{
    const std::time_t now = std::time(nullptr);
    // msvcrt keeps localtime's result per thread.
    const std::tm* tm = std::localtime(&now);
    LocalTime lt;
    if (tm != nullptr)
    {
        lt = LocalTime{tm->tm_year + 1900, tm->tm_mon + 1, tm->tm_mday,
                       tm->tm_hour, tm->tm_min, tm->tm_sec};
    }
    return lt;
}

}  // namespace sys
