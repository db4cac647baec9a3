#include "lumo/ParamPriority.h"

namespace lumo
{

ParamPriority::ParamPriority(const ParamPriority& other)
    : _last_time(other.get_last_time()), _hold_time(other._hold_time), _level(other.get_level())
{
}

ParamPriority& ParamPriority::operator=(const ParamPriority& other)
{
    _last_time.store(other.get_last_time(), std::memory_order_relaxed);
    _hold_time = other._hold_time;
    _level.store(other.get_level(), std::memory_order_relaxed);
    return *this;
}

bool ParamPriority::is_free(int level, double now) const
{
    const bool outranked = level < get_level();
    const bool held = now <= get_last_time() + _hold_time;
    return !(outranked && held);
}

bool ParamPriority::take(int level, double now)
{
    if (!is_free(level, now))
    {
        return false;
    }
    _last_time.store(now, std::memory_order_relaxed);
    _level.store(level, std::memory_order_relaxed);
    return true;
}

void ParamPriority::release(int level)
{
    int expected = level;
    _level.compare_exchange_strong(expected, 0, std::memory_order_relaxed);
}

}  // namespace lumo
