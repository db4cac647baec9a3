#include "zarquette/gui/ParamInbox.h"

#include "gadu/TimerMessage.h"

namespace zarquette
{

void ParamInbox::set_up(int nbr_params, ApplyParam apply_param, ApplyLearn apply_learn)
{
    _nbr_params = nbr_params > 0 ? nbr_params : 0;
    _slots = std::make_unique<Slot[]>(static_cast<std::size_t>(_nbr_params));
    _apply_param = std::move(apply_param);
    _apply_learn = std::move(apply_learn);
}

// The payload first, the flag after: whoever sees the flag sees the payload.
void ParamInbox::post_param(int index, std::int32_t level)
{
    if (is_param(index))
    {
        Slot& slot = _slots[static_cast<std::size_t>(index)];
        slot.level.store(level, std::memory_order_relaxed);
        slot.param_dirty.store(true, std::memory_order_release);
    }
}

void ParamInbox::post_learn(int index, std::int32_t state)
{
    if (is_param(index))
    {
        Slot& slot = _slots[static_cast<std::size_t>(index)];
        slot.learn_state.store(state, std::memory_order_relaxed);
        slot.learn_dirty.store(true, std::memory_order_release);
    }
}

void ParamInbox::take()
{
    for (int i = 0; i < _nbr_params; ++i)
    {
        Slot& slot = _slots[static_cast<std::size_t>(i)];
        if (slot.param_dirty.exchange(false, std::memory_order_acquire) && _apply_param)
        {
            _apply_param(i, slot.level.load(std::memory_order_relaxed));
        }
        if (slot.learn_dirty.exchange(false, std::memory_order_acquire) && _apply_learn)
        {
            _apply_learn(i, slot.learn_state.load(std::memory_order_relaxed));
        }
    }
}

std::int32_t ParamInbox::handle_message(const gadu::MessageInterface& message)
{
    if (dynamic_cast<const gadu::Notify*>(&message) == nullptr)
    {
        return 0;
    }
    take();
    return 1;
}

}  // namespace zarquette
