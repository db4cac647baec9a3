#pragma once

#include "lumo/ParamPriority.h"

#include <vector>

namespace lumo
{

// One ParamPriority per parameter, in internal-index order. Each operation reads
// the clock once. Sized once when the adapter is built, before any thread uses it.
class ParamPriorityList
{
public:
    virtual ~ParamPriorityList() = default;

    void resize(int count);
    int get_size() const { return static_cast<int>(_list.size()); }

    bool is_free(int index, int level) const;
    bool take(int index, int level);
    // take with a clock reading the caller made once for several parameters.
    bool take_at(int index, int level, double now);
    void release(int index, int level);

    const ParamPriority& use(int index) const { return _list[static_cast<std::size_t>(index)]; }

private:
    std::vector<ParamPriority> _list;
};

}  // namespace lumo
