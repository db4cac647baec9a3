#include "sys/TickUnwrap.h"

namespace sys
{

std::uint64_t TickUnwrap::extend(std::uint32_t tick)
{
    std::uint64_t latest = _latest.load(std::memory_order_acquire);
    for (;;)
    {
        std::uint64_t next = tick;
        if (latest != unset)
        {
            // The distance from the latest reading, modulo 2^32: a wrap is a
            // small forward step like any other.
            const auto step = static_cast<std::int32_t>(tick - static_cast<std::uint32_t>(latest));
            if (step <= 0)
            {
                // Another thread read the tick a moment later and stored it
                // first: answer its reading so the clock never runs backwards.
                return latest;
            }
            next = latest + static_cast<std::uint64_t>(step);
        }
        if (_latest.compare_exchange_weak(latest, next, std::memory_order_acq_rel,
                                          std::memory_order_acquire))
        {
            return next;
        }
    }
}

void TickUnwrap::restart()
{
    _latest.store(unset, std::memory_order_release);
}

}  // namespace sys
