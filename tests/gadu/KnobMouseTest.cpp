#include "gadu/Knob.h"
#include "gadu/MouseCompatibility.h"

#include "ControlHarness.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace gadu
{
namespace
{

constexpr double kPi = 3.14159265358979323846;
constexpr std::int32_t kCx = 64;
constexpr std::int32_t kCy = 64;

// A knob set up as the editor sets its knobs: centred at (64, 64), a hit
// square of 80 pixels, one range per 256 pixels, fine factor 1/32.
class KnobMouseTest : public gadu_test::ControlHarness
{
protected:
    void SetUp() override
    {
        MouseCompatibility::use_instance().set_mode(MouseCompatibility::kEndlessDrag);
        knob.set_hit_rect(Rect{-40, -40, 40, 40});
        knob.set_pixels_per_range(256);
        knob.set_fine_factor(0.03125f);
        knob.set_angle(0.5417f, -0.75f);
        knob.set_rotate_body(true);
        knob.set_position(kCx, kCy);
        knob.set_listener(&listener);
        group.add_control(knob);
        open();
    }

    void TearDown() override { MouseCompatibility::use_instance().set_mode(MouseCompatibility::kEndlessDrag); }

    // Moves the pointer by (dx, dy) count times, 4 ms apart.
    void drag(std::int32_t count, std::int32_t dx, std::int32_t dy)
    {
        for (std::int32_t i = 0; i < count; ++i)
        {
            wait(0.004);
            move_by(dx, dy);
        }
    }

    double raw() const { return knob.use_behaviour().get_raw_value(); }
    std::int32_t state() const { return knob.use_behaviour().get_state(); }
    void release_and_settle()
    {
        window.release(kCx, kCy, mouse_button::left);
        wait(3.0);
    }

    Knob knob;
};

TEST_F(KnobMouseTest, DraggingUpBy128PixelsMovesHalfTheRangeAsAGesture)
{
    window.press(kCx, kCy, mouse_button::left);
    EXPECT_EQ(state(), PotBehaviour::drag);
    EXPECT_FALSE(window.is_cursor_visible());
    drag(128, 0, -1);
    const double at_release = knob.get_value();
    EXPECT_TRUE(knob.is_pressed());
    release_and_settle();
    EXPECT_FALSE(knob.is_pressed());
    EXPECT_TRUE(window.is_cursor_visible());
    EXPECT_FALSE(window.holds_capture());
    // The shown value lags the pointer by about its speed over 2 pi f (here
    // 1/256 every 4 ms at 3 Hz), then catches up.
    EXPECT_NEAR(at_release, 0.5 - (1.0 / 256.0 / 0.004) / (2.0 * kPi * 3.0), 0.005);
    EXPECT_NEAR(knob.get_value(), 0.5, 1e-9);
    EXPECT_EQ(state(), PotBehaviour::idle);

    // A host sees one gesture: begins and changes at 200 while held, one end
    // at the release, then the tail at 50, never falling.
    const std::string outline = listener.outline();
    EXPECT_EQ(outline.front(), 'b') << outline;
    EXPECT_EQ(outline.find_first_not_of("bv"), outline.size() - 2) << outline;
    EXPECT_EQ(outline.substr(outline.size() - 3), "vev");
    const auto values = listener.of("value");
    EXPECT_EQ(values.front().level, 200);
    EXPECT_EQ(values.back().level, 50);
    EXPECT_NEAR(values.back().value, 0.5, 1e-9);
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end(), [](const auto& a, const auto& b) {
        return a.value < b.value;
    }));
}

TEST_F(KnobMouseTest, SidewaysMotionIsFineAndHysteresisKeepsTheModeInBetween)
{
    const auto mode = [&] { return knob.use_behaviour().get_direction_mode(); };
    window.press(kCx, kCy, mouse_button::left);
    drag(256, 1, 0);
    EXPECT_EQ(mode(), PotBehaviour::kHorizontalFine);
    EXPECT_NEAR(raw(), 256.0 / 8192.0, 1e-12);
    // At about 27 degrees the fine mode stays: two sideways pixels per
    // vertical one, each counting 1/8192.
    drag(20, 2, -1);
    EXPECT_EQ(mode(), PotBehaviour::kHorizontalFine);
    EXPECT_NEAR(raw(), 296.0 / 8192.0, 1e-12);
    // Mostly vertical motion returns to the coarse mode, which the same
    // in-between motion then no longer leaves.
    drag(16, 0, -1);
    EXPECT_EQ(mode(), PotBehaviour::kVertical);
    const double coarse = 296.0 / 8192.0 + 16.0 / 256.0;
    EXPECT_NEAR(raw(), coarse, 1e-12);
    drag(20, 2, -1);
    EXPECT_EQ(mode(), PotBehaviour::kVertical);
    release_and_settle();
    EXPECT_NEAR(knob.get_value(), coarse + 20.0 / 256.0, 1e-9);
}

TEST_F(KnobMouseTest, TurningBackAfterAnOvershootStartsFromTheEnd)
{
    // Far past the top, then 10 back; far past the bottom, then 8 back.
    for (const auto& [past, back, expected] : {std::tuple{-1, 10, 1.0 - 10.0 / 256.0}, {1, -8, 8.0 / 256.0}})
    {
        window.press(kCx, kCy, mouse_button::left);
        drag(306, 0, past);
        drag(std::abs(back), 0, back > 0 ? 1 : -1);
        EXPECT_NEAR(raw(), expected, 1e-12);
        release_and_settle();
        EXPECT_NEAR(knob.get_value(), expected, 1e-9);
    }
}

TEST_F(KnobMouseTest, DoubleClickRestoresTheDefaultInOneChange)
{
    knob.set_default_value(0.3);
    knob.set_value(0.7, 200);
    listener.events.clear();
    window.press(kCx, kCy, mouse_button::left);
    window.release(kCx, kCy, mouse_button::left);
    window.double_click(kCx, kCy, mouse_button::left);
    release_and_settle();
    EXPECT_DOUBLE_EQ(knob.get_value(), 0.3);
    const auto values = listener.of("value");
    ASSERT_EQ(values.size(), 1u);
    EXPECT_DOUBLE_EQ(values[0].value, 0.3);
    EXPECT_EQ(values[0].level, 1);
}

TEST_F(KnobMouseTest, ARefusedChangeEndsTheGestureAndKeepsTheValue)
{
    listener.refuse_below = 1000;
    window.press(kCx, kCy, mouse_button::left);
    drag(20, 0, -1);
    EXPECT_DOUBLE_EQ(knob.get_value(), 0.0);
    EXPECT_EQ(state(), PotBehaviour::idle);
    EXPECT_FALSE(window.holds_capture());
    EXPECT_TRUE(window.is_cursor_visible());
    window.release(kCx, kCy, mouse_button::left);
}

TEST_F(KnobMouseTest, ASecondButtonDuringADragBelongsToTheDrag)
{
    window.press(kCx, kCy, mouse_button::left);
    drag(32, 0, -1);
    window.press(kCx, kCy, mouse_button::right);
    window.release(kCx, kCy, mouse_button::right);
    drag(32, 0, -1);
    EXPECT_NEAR(raw(), 0.25, 1e-12);
    release_and_settle();
    EXPECT_NEAR(knob.get_value(), 0.25, 1e-9);
}

TEST_F(KnobMouseTest, APlainCaptureKeepsTheCursorAndComputesItsOwnMotion)
{
    MouseCompatibility::use_instance().set_mode(MouseCompatibility::kPlainCapture);
    window.press(kCx, kCy, mouse_button::left);
    EXPECT_TRUE(window.holds_capture());
    // The first position only sets where motion is counted from.
    window.move(kCx, kCy - 1);
    drag(127, 0, -1);
    EXPECT_TRUE(window.is_cursor_visible());
    window.release(kCx, kCy - 128, mouse_button::left);
    wait(3.0);
    EXPECT_NEAR(knob.get_value(), 127.0 / 256.0, 1e-9);
    EXPECT_EQ(window.get_cursor().y, kCy - 128);
}

TEST_F(KnobMouseTest, HidingTheKnobStopsItsGesture)
{
    window.press(kCx, kCy, mouse_button::left);
    drag(10, 0, -1);
    knob.handle_message(ShowObject(false));
    EXPECT_EQ(state(), PotBehaviour::idle);
    EXPECT_FALSE(window.holds_capture());
}

TEST_F(KnobMouseTest, OnlyTheLowerCornerTrianglesJogAgainstTheTurn)
{
    // Window pixels; the hit square runs from (24, 24) to (104, 104).
    const struct
    {
        float span;
        std::int32_t x, y, direction;
    } cases[] = {{-0.75f, 26, 102, -1}, {-0.75f, 24, 103, -1}, {-0.75f, 101, 102, 1}, {-0.75f, 64, 102, 0},
                 {-0.75f, 26, 70, 0},   {-0.75f, 64, 64, 0},   {0.75f, 26, 102, 1},   {0.75f, 101, 102, -1},
                 {0.0f, 26, 102, 0}};
    for (const auto& c : cases)
    {
        knob.set_angle(0.0f, c.span);
        EXPECT_EQ(knob.get_jog_direction(c.x, c.y), c.direction) << c.span << " at " << c.x << ", " << c.y;
    }
}

// A held jog eases its speed towards full speed backwards with a time
// constant of 8 s: after t seconds the speed is about -(1 - e^(-t/8)) and the
// value has fallen by about t - 8 (1 - e^(-t/8)), 0.0151 after half a second.
TEST_F(KnobMouseTest, AHeldCornerJogsSlowlyTowardsTheStart)
{
    knob.set_value(0.5, 200);
    window.press(26, 102, mouse_button::left);
    ASSERT_EQ(state(), PotBehaviour::jog);
    EXPECT_TRUE(window.is_cursor_visible());
    wait(0.5);
    EXPECT_NEAR(knob.get_value(), 0.5 - 0.0151, 0.002);
    EXPECT_NEAR(knob.use_behaviour().get_jog_speed(), -(1.0 - std::exp(-0.5 / 8.0)), 0.005);
    EXPECT_EQ(listener.of("value").back().level, 200);

    // Released, the speed dies away quickly and the jog ends.
    const double at_release = knob.get_value();
    window.release(26, 102, mouse_button::left);
    wait(3.0);
    EXPECT_EQ(state(), PotBehaviour::idle);
    EXPECT_LT(knob.get_value(), at_release);
    EXPECT_GT(knob.get_value(), at_release - 0.01);
    EXPECT_EQ(listener.of("value").back().level, 50);
}

TEST_F(KnobMouseTest, MovingSidewaysDuringAJogSetsItsSpeedWhichOutlivesTheRelease)
{
    knob.set_value(0.5, 200);
    window.press(101, 102, mouse_button::left);
    window.move(101 - 4, 102);
    wait(0.1);
    EXPECT_FALSE(knob.use_behaviour().is_jog_speed_by_mouse());
    EXPECT_GT(knob.use_behaviour().get_jog_speed(), 0.0);

    window.move(101 - 64, 102);
    wait(0.03);
    EXPECT_DOUBLE_EQ(knob.use_behaviour().get_jog_speed(), -64.0 * 64.0 / 65536.0);
    const double before = knob.get_value();
    wait(0.6);
    EXPECT_NEAR(knob.get_value(), before - 0.6 * 0.0625, 1e-9);

    // The pot runs on at that speed (still at 200) until it reaches the end.
    window.release(101 - 64, 102, mouse_button::left);
    wait(1.0);
    EXPECT_EQ(state(), PotBehaviour::jog);
    EXPECT_EQ(listener.of("value").back().level, 200);
    wait(10.0);
    EXPECT_DOUBLE_EQ(knob.get_value(), 0.0);
    EXPECT_EQ(state(), PotBehaviour::idle);
}

TEST_F(KnobMouseTest, AButtonLeftOutOfTheGesturesIsLeftToTheListeners)
{
    knob.set_gesture_buttons(mouse_button::left);
    window.press(kCx, kCy, mouse_button::right);
    EXPECT_EQ(state(), PotBehaviour::idle);
    EXPECT_FALSE(window.holds_capture());
    drag(20, 0, -1);
    window.release(kCx, kCy - 20, mouse_button::right);
    EXPECT_TRUE(listener.events.empty());
    EXPECT_TRUE(knob.is_pressed());

    window.press(kCx, kCy, mouse_button::left);
    EXPECT_EQ(state(), PotBehaviour::drag);
    window.release(kCx, kCy, mouse_button::left);
}

TEST_F(KnobMouseTest, LosingTheMouseToAnotherWindowEndsTheGesture)
{
    window.press(kCx, kCy, mouse_button::left);
    drag(64, 0, -1);
    window.take_capture_away();
    ASSERT_EQ(listener.of("end").size(), 1u);
    EXPECT_TRUE(window.is_cursor_visible());
    // The tail settles at level 50 and the behaviour stops: nothing holds the
    // parameter any more.
    wait(3.0);
    EXPECT_NEAR(knob.get_value(), 0.25, 1e-9);
    EXPECT_EQ(state(), PotBehaviour::idle);
    EXPECT_EQ(listener.of("value").back().level, 50);
    const std::size_t begins = listener.of("begin").size();
    wait(1.0);
    EXPECT_EQ(listener.of("begin").size(), begins);
}

// Without a window nobody grants the capture or the timer: the knob stays
// idle and its value where it was.
TEST(KnobWithoutWindow, ARefusedCaptureLeavesItIdle)
{
    Knob knob;
    knob.set_hit_rect(Rect{-10, -10, 10, 10});
    EXPECT_EQ(knob.handle_message(MouseClick(0, 0, mouse_button::left, 0, 0)), 1);
    EXPECT_EQ(knob.use_behaviour().get_state(), PotBehaviour::idle);
    EXPECT_EQ(knob.handle_message(MouseMove(0, -50)), 0);
    knob.handle_message(Notify(1, 5.0));
    EXPECT_EQ(knob.handle_message(MouseClick(0, 0, 0, 0, 0)), 1);
    EXPECT_DOUBLE_EQ(knob.get_value(), 0.0);
}

}  // namespace
}  // namespace gadu
