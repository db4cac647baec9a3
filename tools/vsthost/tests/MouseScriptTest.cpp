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
    ASSERT_EQ(steps.size(), 9u + 15u);
    EXPECT_EQ(steps[0].action, Action::down);
    EXPECT_EQ(steps[0].x, 10);
    EXPECT_EQ(steps[0].y, 20);
    EXPECT_EQ(steps[17].action, Action::up);
    EXPECT_EQ(steps[18].action, Action::dblclick);
    EXPECT_EQ(steps[22].action, Action::wheel);
    EXPECT_EQ(steps[22].amount, -240);
    EXPECT_EQ(steps[23].action, Action::wait);
    EXPECT_EQ(steps[23].amount, 150);
}

TEST(MouseScript, AMoveIsEqualSingleMovesFromTheLastPoint)
{
    // A drag upwards by 128 pixels in 16 moves, past the window's edge.
    const auto steps = MouseScript::parse("down 10 20; wait 50; move 10 -108 16; move 14 -108");
    ASSERT_EQ(steps.size(), 2u + 16u + 1u);
    for (int i = 1; i <= 16; ++i)
    {
        EXPECT_EQ(steps[static_cast<std::size_t>(1 + i)].action, Action::move);
        EXPECT_EQ(steps[static_cast<std::size_t>(1 + i)].x, 10);
        EXPECT_EQ(steps[static_cast<std::size_t>(1 + i)].y, 20 - 8 * i);
    }
    EXPECT_EQ(steps.back().x, 14);
    // Without a point before it, a move starts at the origin.
    const auto first = MouseScript::parse(" ; move 4 8 2;; \n");
    ASSERT_EQ(first.size(), 2u);
    EXPECT_EQ(first[0].x, 2);
    EXPECT_EQ(first[0].y, 4);
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
