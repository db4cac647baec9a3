#include "lumo/AutomationLimit.h"

#include <map>

namespace lumo
{

void AutomationLimit::update(int budget, const std::vector<int>& priorities)
{
    if (budget <= 0)
    {
        return;
    }
    std::map<int, int> count_per_priority;
    for (int p : priorities)
    {
        ++count_per_priority[p];
    }
    int accumulated = 0;
    for (const auto& [priority, count] : count_per_priority)
    {
        accumulated += count;
        if (accumulated > budget)
        {
            break;
        }
        _limit = priority;
    }
}

}  // namespace lumo
