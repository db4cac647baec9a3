#include "lumo/ParamPriorityList.h"

#include "sys/Clock.h"

namespace lumo
{

void ParamPriorityList::resize(int count)
{
    _list.resize(count > 0 ? static_cast<std::size_t>(count) : 0u);
}

bool ParamPriorityList::is_free(int index, int level) const
{
    return use(index).is_free(level, sys::get_clock_s());
}

bool ParamPriorityList::take(int index, int level)
{
    return take_at(index, level, sys::get_clock_s());
}

bool ParamPriorityList::take_at(int index, int level, double now)
{
    return _list[static_cast<std::size_t>(index)].take(level, now);
}

void ParamPriorityList::release(int index, int level)
{
    _list[static_cast<std::size_t>(index)].release(level);
}

}  // namespace lumo
