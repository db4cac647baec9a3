#include "lumo/ParamPriorityList.h"
#include "sys/ClockPin.h"
#include "sys/TickPin.h"

#include <gtest/gtest.h>

namespace
{

namespace level = lumo::priority_level;

class ParamPriorityListTest : public ::testing::Test
{
protected:
    void SetUp() override { list.resize(6); }

    sys::ClockPin clock{1000.0};
    lumo::ParamPriorityList list;
};

TEST_F(ParamPriorityListTest, DragBlocksAutomationAndMidiUntilHoldTimeRunsOut)
{
    // The user drags parameter 2 and moves it every 0.1 s for a second.
    for (int step = 0; step < 10; ++step)
    {
        ASSERT_TRUE(list.take(2, level::gui_drag));
        clock.advance(0.05);
        EXPECT_FALSE(list.take(2, level::host_automation));
        EXPECT_FALSE(list.take(2, level::midi));
        EXPECT_FALSE(list.is_free(2, level::midi));
        // A host program change has the drag's level and passes.
        EXPECT_TRUE(list.is_free(2, level::program));
        clock.advance(0.05);
    }
    // Other parameters are not affected.
    EXPECT_TRUE(list.take(3, level::host_automation));

    // Last drag change at t; 0.5 s later it still holds (the bound is inclusive)...
    const double last = list.use(2).get_last_time();
    clock.set_seconds(last + 0.5);
    EXPECT_FALSE(list.take(2, level::host_automation));
    // ...and just after, automation is accepted again and becomes the holder.
    clock.set_seconds(last + 0.5001);
    EXPECT_TRUE(list.take(2, level::host_automation));
    EXPECT_EQ(list.use(2).get_level(), level::host_automation);
    EXPECT_FALSE(list.take(2, level::gui_tail));
    EXPECT_TRUE(list.take(2, level::midi));
}

TEST_F(ParamPriorityListTest, EqualLevelsShareAndOnlyTheHolderReleases)
{
    ASSERT_TRUE(list.take(0, level::host_automation));
    clock.advance(0.01);
    EXPECT_TRUE(list.take(0, level::host_automation));

    ASSERT_TRUE(list.take(1, level::gui_drag));
    list.release(1, level::gui_tail);  // not the holder: the hold stays
    EXPECT_FALSE(list.is_free(1, level::host_automation));
    list.release(1, level::gui_drag);
    EXPECT_EQ(list.use(1).get_level(), 0);
    EXPECT_TRUE(list.take(1, level::host_automation));
}

TEST_F(ParamPriorityListTest, IsFreeChangesNothingAndResizeKeepsHolds)
{
    ASSERT_TRUE(list.take(4, level::midi));
    const double t = list.use(4).get_last_time();
    clock.advance(0.2);
    EXPECT_TRUE(list.is_free(4, level::gui_drag));
    EXPECT_EQ(list.use(4).get_level(), level::midi);
    EXPECT_DOUBLE_EQ(list.use(4).get_last_time(), t);
    list.resize(8);
    EXPECT_EQ(list.use(4).get_level(), level::midi);
    EXPECT_EQ(list.use(7).get_level(), 0);
}

// A hold taken just before the millisecond tick wraps ends 0.5 s later like
// any other; it must not lock automation out until the tick climbs back.
TEST(ParamPriorityListWrap, HoldEndsOnTimeAcrossTheTickWrap)
{
    sys::TickPin tick(0xffffff00u);  // 256 ms before the wrap
    lumo::ParamPriorityList list;
    list.resize(1);
    ASSERT_TRUE(list.take(0, level::gui_drag));
    tick.advance_ms(400);
    EXPECT_FALSE(list.take(0, level::host_automation));
    tick.advance_ms(200);
    EXPECT_TRUE(list.take(0, level::host_automation));
}

}  // namespace
