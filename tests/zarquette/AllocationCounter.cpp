#include "AllocationCounter.h"

#include <cstdlib>
#include <new>

namespace
{

thread_local bool counting = false;
thread_local long allocations = 0;

}  // namespace

AllocationCounter::AllocationCounter()
{
    allocations = 0;
    counting = true;
}

AllocationCounter::~AllocationCounter()
{
    counting = false;
}

long AllocationCounter::get_count() const
{
    return allocations;
}

void* operator new(std::size_t n)
{
    if (counting)
    {
        ++allocations;
    }
    if (void* p = std::malloc(n == 0 ? 1 : n))
    {
        return p;
    }
    throw std::bad_alloc();
}

void operator delete(void* p) noexcept
{
    std::free(p);
}

void operator delete(void* p, std::size_t) noexcept
{
    std::free(p);
}
