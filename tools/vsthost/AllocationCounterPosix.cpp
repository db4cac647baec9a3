#include "AllocationCounter.h"

#include <cstdlib>
#include <new>

// The host's replacement of the global allocation functions. Plug-ins loaded
// into the process bind to these, as the executable exports them.

namespace
{

thread_local bool t_counting = false;
thread_local long t_count = 0;

void* allocate(std::size_t size)
{
    if (t_counting)
    {
        ++t_count;
    }
    // malloc(0) may answer null; new must not.
    if (void* p = std::malloc(size != 0 ? size : 1))
    {
        return p;
    }
    throw std::bad_alloc();
}

void* allocate_aligned(std::size_t size, std::align_val_t alignment)
{
    if (t_counting)
    {
        ++t_count;
    }
    const auto align = static_cast<std::size_t>(alignment);
    // aligned_alloc wants a size that is a multiple of the alignment.
    if (void* p = std::aligned_alloc(align, (size + align - 1) / align * align + (size == 0 ? align : 0)))
    {
        return p;
    }
    throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size)
{
    return allocate(size);
}

void* operator new[](std::size_t size)
{
    return allocate(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    try
    {
        return allocate(size);
    }
    catch (const std::bad_alloc&)
    {
        return nullptr;
    }
}

void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept
{
    return operator new(size, tag);
}

void* operator new(std::size_t size, std::align_val_t alignment)
{
    return allocate_aligned(size, alignment);
}

void* operator new[](std::size_t size, std::align_val_t alignment)
{
    return allocate_aligned(size, alignment);
}

void operator delete(void* p) noexcept
{
    std::free(p);
}

void operator delete[](void* p) noexcept
{
    std::free(p);
}

void operator delete(void* p, std::size_t) noexcept
{
    std::free(p);
}

void operator delete[](void* p, std::size_t) noexcept
{
    std::free(p);
}

void operator delete(void* p, std::align_val_t) noexcept
{
    std::free(p);
}

void operator delete[](void* p, std::align_val_t) noexcept
{
    std::free(p);
}

void operator delete(void* p, std::size_t, std::align_val_t) noexcept
{
    std::free(p);
}

void operator delete[](void* p, std::size_t, std::align_val_t) noexcept
{
    std::free(p);
}

namespace vsthost
{

bool AllocationCounter::is_supported()
{
    return true;
}

void AllocationCounter::open()
{
    t_count = 0;
    t_counting = true;
}

long AllocationCounter::close()
{
    t_counting = false;
    return t_count;
}

}  // namespace vsthost
