#include "lumo/NotificationFlag.h"

namespace lumo
{

NotificationFlag::NotificationFlag(bool initial) : _flag(initial)
{
}

void NotificationFlag::notify(NotifierInterface& /*notifier*/)
{
    _flag.store(true, std::memory_order_release);
    on_set();
}

bool NotificationFlag::test() const
{
    return _flag.load(std::memory_order_acquire);
}

void NotificationFlag::clear()
{
    _flag.store(false, std::memory_order_relaxed);
    on_cleared();
}

bool NotificationFlag::test_and_clear()
{
    // A plain load first: most calls find nothing, and the exchange is far
    // dearer. A change the load misses is found at the next call.
    if (!_flag.load(std::memory_order_relaxed))
    {
        return false;
    }
    const bool was_set = _flag.exchange(false, std::memory_order_acq_rel);
    if (was_set)
    {
        on_cleared();
    }
    return was_set;
}

}  // namespace lumo
