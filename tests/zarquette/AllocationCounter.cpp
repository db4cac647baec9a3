#include "AllocationCounter.h"

#include <cstdlib>
#include <new>

namespace
{

thread_local long* counting = nullptr;

}  // namespace

AllocationCounter::AllocationCounter()
{
    counting = &_count;
}

AllocationCounter::~AllocationCounter()
{
    counting = nullptr;
}

void* operator new(std::size_t n)
{
    if (counting != nullptr)
    {
        ++*counting;
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
