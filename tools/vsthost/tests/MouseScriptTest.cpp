#include "tools/vsthost/MouseScript.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace
{

using vsthost::MouseScript;
using Action = MouseScript::Action;

TEST(MouseScript, ReadsEveryActionWithItsNumbers)
{
    const auto steps = MouseScript::parse(
        "down 10 20; move 10 -108 16;up 10 -108\n  dblclick 5 6 ;rdown 1 2; rup 1 2; click 3 4; wheel 7 8 -240; wait 150");
    ASSERT_EQ(steps.size(), 9u);
    EXPECT_EQ(steps[0].action, Action::down);
    EXPECT_EQ(steps[0].x, 10);
    EXPECT_EQ(steps[0].y, 20);
    // Drags past the window's edge give negative coordinates.
    EXPECT_EQ(steps[1].action, Action::move);
    EXPECT_EQ(steps[1].y, -108);
    EXPECT_EQ(steps[1].amount, 16);
    EXPECT_EQ(steps[3].action, Action::dblclick);
    EXPECT_EQ(steps[7].action, Action::wheel);
    EXPECT_EQ(steps[7].amount, -240);
    EXPECT_EQ(steps[8].action, Action::wait);
    EXPECT_EQ(steps[8].amount, 150);
}

TEST(MouseScript, AMoveWithoutStepsIsOneMoveAndEmptyStepsAreSkipped)
{
    const auto steps = MouseScript::parse(" ; move 3 4;; \n");
    ASSERT_EQ(steps.size(), 1u);
    EXPECT_EQ(steps[0].amount, 1);
    EXPECT_TRUE(MouseScript::parse("").empty());
}

TEST(MouseScript, RefusesWhatItCannotPlayAndNamesTheStep)
{
    for (const char* bad : {"jump 1 2", "down 1", "down 1 2 3", "move 1 2 0", "move 1 2 10001", "wait -5",
                            "wait 600001", "wheel 1 2", "down x 2", "down 1 2.5", "click 1 99999999"})
    {
        try
        {
            MouseScript::parse(std::string("down 0 0; ") + bad);
            ADD_FAILURE() << bad << " was taken";
        }
        catch (const std::invalid_argument& e)
        {
            EXPECT_NE(std::string(e.what()).find(bad), std::string::npos) << e.what();
        }
    }
}

}  // namespace
