#include "CpuClock.h"

#include <time.h>

namespace vsthost
{

double get_thread_cpu_seconds()
{
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
}

const char* const block_clock_name = "CPU";

double get_block_clock_seconds()
{
    return get_thread_cpu_seconds();
}

}  // namespace vsthost
