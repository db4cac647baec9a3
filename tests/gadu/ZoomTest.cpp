// The arithmetic between content and platform pixels; how windows use it
// (and the blocks a zoomed screen shows) is checked through the windows
// themselves.
#include "gadu/DoubleClickDetector.h"
#include "gadu/Zoom.h"

#include <gtest/gtest.h>


namespace gadu
{
namespace
{

TEST(Zoom, PositionsGoToTheBlockThatHoldsThemEvenLeftOfTheWindow)
{
    const Zoom three(3);
    EXPECT_EQ(three.to_content(0), 0);
    EXPECT_EQ(three.to_content(2), 0);
    EXPECT_EQ(three.to_content(3), 1);
    EXPECT_EQ(three.to_content(-1), -1);
    EXPECT_EQ(three.to_content(-3), -1);
    EXPECT_EQ(three.to_content(-4), -2);
    EXPECT_EQ(three.to_platform(Rect{1, 2, 4, 6}), (Rect{3, 6, 12, 18}));
    // The content pixels whose blocks an odd platform rectangle touches.
    EXPECT_EQ(three.covering(Rect{4, 2, 7, 3}), (Rect{1, 0, 3, 1}));
    EXPECT_EQ(three.covering(Rect{-2, 0, 0, 3}), (Rect{-1, 0, 0, 1}));
    EXPECT_TRUE(three.covering(Rect{5, 5, 5, 9}).is_empty());
    // A factor that would divide by zero or mirror counts as 1.
    EXPECT_EQ(Zoom(0).get_factor(), 1);
    EXPECT_EQ(Zoom(-2).to_content(-7), -7);
}

TEST(DoubleClickDetector, OnlyAQuickCloseSecondPressOfTheSameButtonIsADoubleClick)
{
    DoubleClickDetector clicks;
    EXPECT_EQ(clicks.on_press(1, 10, 10, 1.0), 0);
    EXPECT_EQ(clicks.on_press(1, 12, 8, 1.5), 1);
    // The third press starts over.
    EXPECT_EQ(clicks.on_press(1, 12, 8, 1.6), 0);
    EXPECT_EQ(clicks.on_press(1, 15, 8, 1.7), 0);
    EXPECT_EQ(clicks.on_press(1, 15, 11, 1.8), 0);
    EXPECT_EQ(clicks.on_press(4, 15, 11, 1.9), 0);
    EXPECT_EQ(clicks.on_press(1, 15, 11, 2.0), 0);
    EXPECT_EQ(clicks.on_press(1, 15, 11, 2.501), 0);
}

}  // namespace
}  // namespace gadu
