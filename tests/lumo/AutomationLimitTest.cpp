#include "lumo/AutomationLimit.h"

#include <gtest/gtest.h>

namespace
{

// Every row starts from the limit a budget of six gives the effect's
// priorities (2); budgets that fit no whole group keep it.
TEST(AutomationLimit, TheLimitIsTheLastWholePriorityGroupInsideTheBudget)
{
    const std::vector<int> effect{0, 2, 2, 2, 2, 2};
    const struct
    {
        int budget;
        std::vector<int> priorities;
        int limit;
    } cases[] = {
        {1, effect, 0}, {5, effect, 0}, {6, effect, 2}, {100, effect, 2},
        {3, {9, 1, 5, 1, 9}, 5},  // groups in increasing order, whatever the parameter order
        {0, effect, 2}, {-3, effect, 2},  // unknown budgets
        {1, {3, 3, 7}, 2},                // two at the lowest priority do not fit a budget of one
    };
    for (const auto& c : cases)
    {
        lumo::AutomationLimit limit;
        limit.update(6, effect);
        limit.update(c.budget, c.priorities);
        EXPECT_EQ(limit.get_limit(), c.limit) << c.budget;
        EXPECT_TRUE(limit.allows(c.limit));
        EXPECT_FALSE(limit.allows(c.limit + 1));
    }
    EXPECT_TRUE(lumo::AutomationLimit().allows(1000000));  // until the host names a budget
}

}  // namespace
