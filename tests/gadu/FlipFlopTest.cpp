#include "gadu/FlipFlop.h"

#include "ControlHarness.h"

#include <gtest/gtest.h>

namespace gadu
{
namespace
{

constexpr std::uint32_t kOff = 0xC00000u;
constexpr std::uint32_t kOn = 0x00C000u;

// The editor's switch: 39 x 25 at (40, 30), two states, 0.1 s to change. The
// second state's picture is narrower and sits 8 pixels to the right, by its
// hot spot.
class FlipFlopTest : public gadu_test::ControlHarness
{
protected:
    void SetUp() override
    {
        on_pic = load(gadu_test::solid_apic(31, 25, kOn));
        Picture on(on_pic);
        on.set_hot_spot(-8, 0);
        flip.set_state_picture(0, Picture(load(gadu_test::solid_apic(39, 25, kOff))));
        flip.set_state_picture(1, on);
        flip.set_animation_duration(0.1);
        flip.set_hit_rect(Rect{0, 0, 39, 25});
        flip.set_position(40, 30);
        flip.set_listener(&listener);
        group.add_control(flip);
        open();
    }

    // The middle of the part that both pictures cover.
    std::uint32_t shown() const { return screen_at(40 + 20, 30 + 12); }

    void wait_and_paint(double seconds)
    {
        wait(seconds);
        window.paint();
    }

    const PicDataInterface* on_pic = nullptr;
    FlipFlop flip;
};

TEST_F(FlipFlopTest, APressTogglesAtOnceAndThePictureChangesHalfWay)
{
    EXPECT_EQ(shown(), kOff);
    window.press(50, 40, mouse_button::left);
    EXPECT_DOUBLE_EQ(flip.get_value(), 1.0);
    ASSERT_EQ(listener.of("value").size(), 1u);
    EXPECT_EQ(listener.of("value")[0].level, 200);
    EXPECT_TRUE(flip.is_animating());

    wait_and_paint(0.040);
    EXPECT_EQ(shown(), kOff);
    wait_and_paint(0.030);
    EXPECT_EQ(shown(), kOn);
    EXPECT_EQ(screen_at(41, 40), gadu_test::kBackgroundColour);
    // The animation ends at the first 30 ms tick from 0.1 s on.
    wait_and_paint(0.060);
    EXPECT_FALSE(flip.is_animating());
    EXPECT_DOUBLE_EQ(flip.get_position(), 1.0);

    // The release does nothing; the next press goes back.
    window.release(50, 40, mouse_button::left);
    EXPECT_DOUBLE_EQ(flip.get_value(), 1.0);
    window.press(50, 40, mouse_button::left);
    EXPECT_DOUBLE_EQ(flip.get_value(), 0.0);
    wait_and_paint(0.040);
    EXPECT_EQ(shown(), kOn);
    wait_and_paint(0.080);
    EXPECT_EQ(shown(), kOff);
}

TEST_F(FlipFlopTest, ChangesFromOutsideAnimateWhenTheyAreDrawn)
{
    flip.set_value_from_param(0.7, 100);
    EXPECT_FALSE(flip.is_animating());
    window.paint();
    EXPECT_TRUE(flip.is_animating());
    EXPECT_EQ(shown(), kOff);
    wait_and_paint(0.150);
    EXPECT_EQ(shown(), kOn);
    EXPECT_FALSE(flip.is_animating());
}

TEST_F(FlipFlopTest, ADisabledOrRefusingSwitchStaysPut)
{
    flip.set_enabled(false);
    window.press(50, 40, mouse_button::left);
    window.release(50, 40, mouse_button::left);
    EXPECT_DOUBLE_EQ(flip.get_value(), 0.0);
    flip.set_enabled(true);
    listener.refuse_below = 1000;
    window.press(50, 40, mouse_button::left);
    EXPECT_DOUBLE_EQ(flip.get_value(), 0.0);
    EXPECT_FALSE(flip.is_animating());
}

TEST_F(FlipFlopTest, TheFirstDrawingShowsTheValueWithoutAnimating)
{
    FlipFlop fresh;
    fresh.set_state_picture(1, Picture(on_pic));
    fresh.set_hit_rect(Rect{0, 0, 31, 25});
    fresh.set_position(4, 90);
    fresh.set_value_from_param(1.0, 1);
    group.add_control(fresh);
    window.paint_all();
    EXPECT_FALSE(fresh.is_animating());
    EXPECT_EQ(screen_at(10, 100), kOn);
}

}  // namespace
}  // namespace gadu
