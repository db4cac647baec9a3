#pragma once

#include <atomic>
#include <cstdint>

namespace gadu
{

// Ids unique in the process for one kind of thing (Tag), counting from 1 so
// that 0 can mean none. Atomic because two editors may live on two threads.
template <typename Tag>
class ProcessIdCounter
{
public:
    static std::uint32_t next() { return _last.fetch_add(1, std::memory_order_relaxed) + 1; }

private:
    static inline std::atomic<std::uint32_t> _last{0};
};

}  // namespace gadu
