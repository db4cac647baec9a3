#include "lumo/GestureQueue.h"

namespace lumo
{

GestureQueue::GestureQueue(int nbr_params)
    : _nbr_params(nbr_params > 0 ? nbr_params : 0),
      _no_edit_open(new std::atomic<bool>[static_cast<std::size_t>(_nbr_params)]),
      _opened_at(new std::atomic<std::uint64_t>[static_cast<std::size_t>(_nbr_params)])
{
    for (int i = 0; i < _nbr_params; ++i)
    {
        _no_edit_open[i].store(true, std::memory_order_relaxed);
        _opened_at[i].store(0, std::memory_order_relaxed);
    }
}

bool GestureQueue::try_open(int index)
{
    if (index < 0 || index >= _nbr_params)
    {
        return false;
    }
    bool expected = true;
    return _no_edit_open[index].compare_exchange_strong(expected, false, std::memory_order_acq_rel);
}

void GestureQueue::commit_open(int index)
{
    const std::uint64_t seq = _next_sequence.fetch_add(1, std::memory_order_relaxed);
    _opened_at[index].store(seq, std::memory_order_release);
}

bool GestureQueue::is_open(int index) const
{
    return index >= 0 && index < _nbr_params && !_no_edit_open[index].load(std::memory_order_acquire);
}

}  // namespace lumo
