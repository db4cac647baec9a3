#include "lumo/AutomationLimit.h"

#include <gtest/gtest.h>

namespace
{

const std::vector<int> effect_priorities{0, 2, 2, 2, 2, 2};

TEST(AutomationLimit, StartsUnlimited)
{
    lumo::AutomationLimit limit;
    EXPECT_EQ(limit.get_limit(), 999999999);
    EXPECT_TRUE(limit.allows(2));
}

TEST(AutomationLimit, HostBudgetsAgainstTheEffectsPriorities)
{
    struct Case
    {
        int budget;
        int limit;
    };
    for (const Case c : {Case{1, 0}, Case{2, 0}, Case{5, 0}, Case{6, 2}, Case{100, 2}})
    {
        lumo::AutomationLimit limit;
        limit.update(c.budget, effect_priorities);
        EXPECT_EQ(limit.get_limit(), c.limit) << "budget " << c.budget;
    }
    lumo::AutomationLimit one;
    one.update(1, effect_priorities);
    EXPECT_TRUE(one.allows(0));
    EXPECT_FALSE(one.allows(2));
}

TEST(AutomationLimit, UnknownOrTooSmallBudgetKeepsThePreviousLimit)
{
    lumo::AutomationLimit limit;
    limit.update(0, effect_priorities);
    EXPECT_EQ(limit.get_limit(), 999999999);
    limit.update(-3, effect_priorities);
    EXPECT_EQ(limit.get_limit(), 999999999);

    limit.update(6, effect_priorities);
    ASSERT_EQ(limit.get_limit(), 2);
    // Two parameters at the lowest priority do not fit a budget of one.
    limit.update(1, {3, 3, 7});
    EXPECT_EQ(limit.get_limit(), 2);
}

TEST(AutomationLimit, WalksPrioritiesInIncreasingOrderWhateverTheParameterOrder)
{
    lumo::AutomationLimit limit;
    limit.update(3, {9, 1, 5, 1, 9});
    EXPECT_EQ(limit.get_limit(), 5);
}

}  // namespace
