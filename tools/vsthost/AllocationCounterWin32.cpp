#include "AllocationCounter.h"

namespace vsthost
{

bool AllocationCounter::is_supported()
{
    return false;
}

void AllocationCounter::open()
{
}

long AllocationCounter::close()
{
    return 0;
}

}  // namespace vsthost
