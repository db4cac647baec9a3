#include "CpuClock.h"

#include <windows.h>

namespace vsthost
{

namespace
{

// Kernel and user time together; FILETIME counts 100 ns units.
double to_seconds(const FILETIME& kernel, const FILETIME& user)
{
    const auto ticks = [](const FILETIME& t) {
        return (static_cast<unsigned long long>(t.dwHighDateTime) << 32) | t.dwLowDateTime;
    };
    return static_cast<double>(ticks(kernel) + ticks(user)) * 1e-7;
}

}  // namespace

double CpuClock::get_thread_seconds()
{
    FILETIME created;
    FILETIME ended;
    FILETIME kernel;
    FILETIME user;
    return GetThreadTimes(GetCurrentThread(), &created, &ended, &kernel, &user) ? to_seconds(kernel, user) : 0.0;
}

double CpuClock::get_process_seconds()
{
    FILETIME created;
    FILETIME ended;
    FILETIME kernel;
    FILETIME user;
    return GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user) ? to_seconds(kernel, user) : 0.0;
}

}  // namespace vsthost
