#include "lumo/NotificationFlag.h"
#include "lumo/NotifierInterface.h"

#include <gtest/gtest.h>

namespace
{

TEST(NotificationFlag, NotificationsBeforeAReadGiveOneReRead)
{
    lumo::NotificationFlag flag;
    lumo::NotifierInterface source;
    flag.notify(source);
    flag.notify(source);
    EXPECT_TRUE(flag.test());
    EXPECT_TRUE(flag.test_and_clear());
    EXPECT_FALSE(flag.test_and_clear());
    flag.notify(source);
    flag.clear();
    EXPECT_FALSE(flag.test());
    EXPECT_TRUE(lumo::NotificationFlag(true).test_and_clear());
}

}  // namespace
