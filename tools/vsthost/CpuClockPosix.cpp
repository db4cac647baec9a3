#include "CpuClock.h"

#include <ctime>

namespace vsthost
{

namespace
{

double read_clock(clockid_t id)
{
    timespec t{};
    return clock_gettime(id, &t) == 0 ? static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9 : 0.0;
}

}  // namespace

double CpuClock::get_thread_seconds()
{
    return read_clock(CLOCK_THREAD_CPUTIME_ID);
}

double CpuClock::get_process_seconds()
{
    return read_clock(CLOCK_PROCESS_CPUTIME_ID);
}

}  // namespace vsthost
