#include "gadu/TimerManager.h"

#include "gadu/MessageHandlerInterface.h"

namespace gadu
{

std::int32_t TimerManager::add(const SetTimer& message)
{
    const bool inserted =
        _timers.emplace(message.get_timer_id(), TimerData{message.use_handler(), message.get_period(), 0.0, false})
            .second;
    return inserted ? 0 : kRefused;
}

std::int32_t TimerManager::remove(const ClearTimer& message)
{
    const auto it = _timers.find(message.get_timer_id());
    if (it == _timers.end())
    {
        return kRefused;
    }
    it->second.removed = true;
    _removed.insert(it->first);
    if (!_servicing)
    {
        drop_removed();
    }
    return 0;
}

void TimerManager::service(double now)
{
    if (_servicing || now - _last_run < kMinInterval - kSlack)
    {
        return;
    }
    _last_run = now;
    _servicing = true;
    // A handler may set new timers while the map is walked: map insertions
    // keep iterators valid, and a new timer fires in this run if its id comes later.
    for (auto& [id, timer] : _timers)
    {
        if (timer.removed || now - timer.last_fired < timer.period - kSlack)
        {
            continue;
        }
        timer.last_fired = now;
        if (timer.handler != nullptr)
        {
            timer.handler->handle_message(Notify(id, now));
        }
    }
    _servicing = false;
    drop_removed();
}

void TimerManager::clear()
{
    for (auto& [id, timer] : _timers)
    {
        timer.removed = true;
        _removed.insert(id);
    }
    if (!_servicing)
    {
        drop_removed();
    }
}

bool TimerManager::is_active(std::uint32_t timer_id) const
{
    const auto it = _timers.find(timer_id);
    return it != _timers.end() && !it->second.removed;
}

void TimerManager::drop_removed()
{
    for (const std::uint32_t id : _removed)
    {
        _timers.erase(id);
    }
    _removed.clear();
}

}  // namespace gadu
