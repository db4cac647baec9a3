#include "CpuClock.h"

#include <windows.h>

namespace vsthost
{

namespace
{

double to_seconds(const FILETIME& t)
{
    // FILETIME counts 100 ns units.
    const unsigned long long ticks = (static_cast<unsigned long long>(t.dwHighDateTime) << 32) | t.dwLowDateTime;
    return static_cast<double>(ticks) * 1e-7;
}

}  // namespace

double get_thread_cpu_seconds()
{
    FILETIME created{};
    FILETIME exited{};
    FILETIME kernel{};
    FILETIME user{};
    if (GetThreadTimes(GetCurrentThread(), &created, &exited, &kernel, &user) == 0)
    {
        return 0.0;
    }
    return to_seconds(kernel) + to_seconds(user);
}

const char* const block_clock_name = "wall";

double get_block_clock_seconds()
{
    LARGE_INTEGER count{};
    LARGE_INTEGER frequency{};
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

}  // namespace vsthost
