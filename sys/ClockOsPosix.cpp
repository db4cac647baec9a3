#include "sys/ClockOs.h"

#include <ctime>

namespace sys
{

std::uint32_t read_os_clock_ms()
{
    timespec ts{};
    ::clock_gettime(CLOCK_MONOTONIC, &ts);
    // Wraps like the Windows millisecond timer.
    const auto ms = static_cast<std::uint64_t>(ts.tv_sec) * 1000u
                  + static_cast<std::uint64_t>(ts.tv_nsec / 1000000);
    return static_cast<std::uint32_t>(ms);
}

LocalTime read_os_local_time()
{
    const std::time_t now = std::time(nullptr);
    std::tm tm{};
    LocalTime lt;
    if (::localtime_r(&now, &tm) != nullptr)
    {
        lt = LocalTime{tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday,
                       tm.tm_hour, tm.tm_min, tm.tm_sec};
    }
    return lt;
}

}  // namespace sys
