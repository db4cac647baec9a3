#include "lumo/NotificationFlag.h"
#include "lumo/NotifierInterface.h"

#include <gtest/gtest.h>

namespace
{

class CountingFlag : public lumo::NotificationFlag
{
public:
    int sets = 0;
    int clears = 0;

protected:
    void on_set() override { ++sets; }
    void on_cleared() override { ++clears; }
};

TEST(NotificationFlag, TwoNotificationsBeforeAReadGiveOneReRead)
{
    CountingFlag flag;
    lumo::NotifierInterface source;
    flag.notify(source);
    flag.notify(source);
    EXPECT_EQ(flag.sets, 2);

    int rereads = 0;
    for (int block = 0; block < 3; ++block)
    {
        rereads += flag.test_and_clear() ? 1 : 0;
    }
    EXPECT_EQ(rereads, 1);
    EXPECT_EQ(flag.clears, 1);
    EXPECT_TRUE(lumo::NotificationFlag(true).test());
}

TEST(NotificationFlag, ClearRunsItsHookEvenWhenAlreadyClear)
{
    CountingFlag flag;
    flag.clear();
    EXPECT_FALSE(flag.test());
    EXPECT_EQ(flag.clears, 1);
}

}  // namespace
