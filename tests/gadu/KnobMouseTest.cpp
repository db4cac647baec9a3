#include "gadu/Knob.h"
#include "gadu/MouseCompatibility.h"

#include "ControlHarness.h"

#include <gtest/gtest.h>

#include <cmath>

namespace gadu
{
namespace
{

using gadu_test::ListenerEvent;

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

    // Moves the pointer by (dx, dy) in single-pixel steps (along the larger
    // motion), 4 ms apart.
    void drag_by(std::int32_t dx, std::int32_t dy)
    {
        const std::int32_t steps = std::max(std::abs(dx), std::abs(dy));
        std::int32_t done_x = 0;
        std::int32_t done_y = 0;
        for (std::int32_t i = 1; i <= steps; ++i)
        {
            const std::int32_t to_x = dx * i / steps;
            const std::int32_t to_y = dy * i / steps;
            wait(0.004);
            move_by(to_x - done_x, to_y - done_y);
            done_x = to_x;
            done_y = to_y;
        }
    }

    void settle() { wait(3.0); }

    Knob knob;
};

TEST_F(KnobMouseTest, DraggingUpBy128PixelsMovesHalfTheRangeAsAGesture)
{
    window.press(kCx, kCy, mouse_button::left);
    EXPECT_EQ(knob.use_behaviour().get_state(), PotBehaviour::drag);
    EXPECT_FALSE(window.is_cursor_visible());
    drag_by(0, -128);
    const double at_release = knob.get_value();
    EXPECT_TRUE(knob.is_pressed());
    window.release(kCx, kCy, mouse_button::left);
    EXPECT_FALSE(knob.is_pressed());
    EXPECT_TRUE(window.is_cursor_visible());
    EXPECT_FALSE(window.holds_capture());
    // The shown value lags the pointer by about its speed over 2 pi f (here
    // 1/256 every 4 ms at 3 Hz), then catches up.
    EXPECT_NEAR(at_release, 0.5 - (1.0 / 256.0 / 0.004) / (2.0 * kPi * 3.0), 0.005);
    settle();
    EXPECT_NEAR(knob.get_value(), 0.5, 1e-9);
    EXPECT_EQ(knob.use_behaviour().get_state(), PotBehaviour::idle);

    // A host sees one gesture: begins while held, one end at the release,
    // held changes at 200 and the tail after the release at 50, never falling.
    std::string seen;
    double last = 0.0;
    for (const ListenerEvent& e : listener.events)
    {
        if (e.what != "check" && (seen.empty() || seen.back() != e.what[0]))
        {
            seen += e.what[0];
        }
        if (e.what == "value")
        {
            EXPECT_EQ(e.level, seen.find('e') == std::string::npos ? 200 : 50);
            EXPECT_GE(e.value, last);
            last = e.value;
        }
    }
    EXPECT_EQ(seen.substr(seen.size() - 3), "vev");
    EXPECT_EQ(seen.find('b'), 0u);
    EXPECT_EQ(listener.of("end").size(), 1u);
    EXPECT_NEAR(last, 0.5, 1e-9);
}

TEST_F(KnobMouseTest, SidewaysMotionIsFineAndHysteresisKeepsTheModeInBetween)
{
    window.press(kCx, kCy, mouse_button::left);
    drag_by(256, 0);
    EXPECT_EQ(knob.use_behaviour().get_direction_mode(), PotBehaviour::kHorizontalFine);
    EXPECT_NEAR(knob.use_behaviour().get_raw_value(), 256.0 / 8192.0, 1e-12);

    // At about 27 degrees the fine mode stays: two sideways pixels per
    // vertical one, each counting 1/8192.
    for (int i = 0; i < 20; ++i)
    {
        wait(0.004);
        move_by(2, -1);
    }
    EXPECT_EQ(knob.use_behaviour().get_direction_mode(), PotBehaviour::kHorizontalFine);
    EXPECT_NEAR(knob.use_behaviour().get_raw_value(), 296.0 / 8192.0, 1e-12);

    // Mostly vertical motion returns to the coarse mode...
    drag_by(0, -16);
    EXPECT_EQ(knob.use_behaviour().get_direction_mode(), PotBehaviour::kVertical);
    const double coarse = knob.use_behaviour().get_raw_value();
    EXPECT_NEAR(coarse, 296.0 / 8192.0 + 16.0 / 256.0, 1e-12);

    // ...which the same in-between motion no longer leaves.
    for (int i = 0; i < 20; ++i)
    {
        wait(0.004);
        move_by(2, -1);
    }
    EXPECT_EQ(knob.use_behaviour().get_direction_mode(), PotBehaviour::kVertical);
    EXPECT_NEAR(knob.use_behaviour().get_raw_value(), coarse + 20.0 / 256.0, 1e-12);
    window.release(kCx, kCy, mouse_button::left);
    settle();
    EXPECT_NEAR(knob.get_value(), coarse + 20.0 / 256.0, 1e-9);
}

TEST_F(KnobMouseTest, TurningBackAfterAnOvershootStartsFromTheEnd)
{
    window.press(kCx, kCy, mouse_button::left);
    drag_by(0, -306);
    EXPECT_NEAR(knob.use_behaviour().get_raw_value(), 306.0 / 256.0, 1e-12);
    settle();
    EXPECT_DOUBLE_EQ(knob.get_value(), 1.0);
    drag_by(0, 10);
    EXPECT_NEAR(knob.use_behaviour().get_raw_value(), 1.0 - 10.0 / 256.0, 1e-12);
    EXPECT_LT(knob.get_value(), 1.0);
    window.release(kCx, kCy, mouse_button::left);
    settle();
    EXPECT_NEAR(knob.get_value(), 1.0 - 10.0 / 256.0, 1e-9);

    // The same at the bottom end.
    window.press(kCx, kCy, mouse_button::left);
    drag_by(0, 300);
    drag_by(0, -8);
    EXPECT_NEAR(knob.use_behaviour().get_raw_value(), 8.0 / 256.0, 1e-12);
    window.release(kCx, kCy, mouse_button::left);
    settle();
    EXPECT_NEAR(knob.get_value(), 8.0 / 256.0, 1e-9);
}

TEST_F(KnobMouseTest, DoubleClickRestoresTheDefaultInOneChange)
{
    knob.set_default_value(0.3);
    window.press(kCx, kCy, mouse_button::left);
    drag_by(0, -100);
    window.release(kCx, kCy, mouse_button::left);
    settle();
    listener.events.clear();

    window.press(kCx, kCy, mouse_button::left);
    window.release(kCx, kCy, mouse_button::left);
    window.double_click(kCx, kCy, mouse_button::left);
    window.release(kCx, kCy, mouse_button::left);
    settle();
    EXPECT_DOUBLE_EQ(knob.get_value(), 0.3);
    const auto values = listener.of("value");
    ASSERT_EQ(values.size(), 1u);
    EXPECT_DOUBLE_EQ(values[0].value, 0.3);
    EXPECT_EQ(values[0].level, 1);
}

TEST_F(KnobMouseTest, AClickOutsideEveryControlChangesNothing)
{
    knob.set_value(0.4, 200);
    window.paint();
    listener.events.clear();
    window.press(2, 2, mouse_button::left);
    wait(0.1);
    window.move(2, 60);
    window.release(2, 60, mouse_button::left);
    wait(0.5);
    EXPECT_DOUBLE_EQ(knob.get_value(), 0.4);
    EXPECT_TRUE(listener.events.empty());
    EXPECT_FALSE(window.holds_capture());
    EXPECT_TRUE(window.paint().is_empty());
}

TEST_F(KnobMouseTest, ARefusedChangeEndsTheGestureAndKeepsTheValue)
{
    listener.refuse_below = 1000;
    window.press(kCx, kCy, mouse_button::left);
    drag_by(0, -20);
    EXPECT_DOUBLE_EQ(knob.get_value(), 0.0);
    EXPECT_EQ(knob.use_behaviour().get_state(), PotBehaviour::idle);
    EXPECT_FALSE(window.holds_capture());
    EXPECT_TRUE(window.is_cursor_visible());
    window.release(kCx, kCy, mouse_button::left);
}

TEST_F(KnobMouseTest, ASecondButtonDuringADragBelongsToTheDrag)
{
    window.press(kCx, kCy, mouse_button::left);
    drag_by(0, -32);
    window.press(kCx, kCy, mouse_button::right);
    window.release(kCx, kCy, mouse_button::right);
    drag_by(0, -32);
    EXPECT_NEAR(knob.use_behaviour().get_raw_value(), 0.25, 1e-12);
    window.release(kCx, kCy, mouse_button::left);
    settle();
    EXPECT_NEAR(knob.get_value(), 0.25, 1e-9);
}

TEST_F(KnobMouseTest, APlainCaptureKeepsTheCursorAndComputesItsOwnMotion)
{
    MouseCompatibility::use_instance().set_mode(MouseCompatibility::kPlainCapture);
    window.press(kCx, kCy, mouse_button::left);
    EXPECT_TRUE(window.holds_capture());
    // The first position only sets where motion is counted from.
    for (std::int32_t y = kCy - 1; y >= kCy - 128; --y)
    {
        wait(0.004);
        window.move(kCx, y);
        EXPECT_TRUE(window.is_cursor_visible());
    }
    window.release(kCx, kCy - 128, mouse_button::left);
    settle();
    EXPECT_NEAR(knob.get_value(), 127.0 / 256.0, 1e-9);
    EXPECT_EQ(window.get_cursor().y, kCy - 128);
}

TEST_F(KnobMouseTest, HidingTheKnobStopsItsGesture)
{
    window.press(kCx, kCy, mouse_button::left);
    drag_by(0, -10);
    knob.handle_message(ShowObject(false));
    EXPECT_EQ(knob.use_behaviour().get_state(), PotBehaviour::idle);
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
    ASSERT_EQ(knob.use_behaviour().get_state(), PotBehaviour::jog);
    EXPECT_TRUE(window.is_cursor_visible());
    wait(0.5);
    EXPECT_NEAR(knob.get_value(), 0.5 - 0.0151, 0.002);
    EXPECT_NEAR(knob.use_behaviour().get_jog_speed(), -(1.0 - std::exp(-0.5 / 8.0)), 0.005);
    EXPECT_EQ(listener.of("value").back().level, 200);

    // Released, the speed dies away quickly and the jog ends.
    const double at_release = knob.get_value();
    window.release(26, 102, mouse_button::left);
    wait(3.0);
    EXPECT_EQ(knob.use_behaviour().get_state(), PotBehaviour::idle);
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
    EXPECT_EQ(knob.use_behaviour().get_state(), PotBehaviour::jog);
    EXPECT_EQ(listener.of("value").back().level, 200);
    wait(10.0);
    EXPECT_DOUBLE_EQ(knob.get_value(), 0.0);
    EXPECT_EQ(knob.use_behaviour().get_state(), PotBehaviour::idle);
}

TEST_F(KnobMouseTest, AButtonLeftOutOfTheGesturesIsLeftToTheListeners)
{
    knob.set_gesture_buttons(mouse_button::left);
    window.press(kCx, kCy, mouse_button::right);
    EXPECT_EQ(knob.use_behaviour().get_state(), PotBehaviour::idle);
    EXPECT_FALSE(window.holds_capture());
    drag_by(0, -20);
    window.release(kCx, kCy - 20, mouse_button::right);
    EXPECT_TRUE(listener.events.empty());
    EXPECT_TRUE(knob.is_pressed());

    window.press(kCx, kCy, mouse_button::left);
    EXPECT_EQ(knob.use_behaviour().get_state(), PotBehaviour::drag);
    window.release(kCx, kCy, mouse_button::left);
}

TEST_F(KnobMouseTest, LosingTheMouseToAnotherWindowEndsTheGesture)
{
    window.press(kCx, kCy, mouse_button::left);
    drag_by(0, -64);
    window.take_capture_away();
    ASSERT_EQ(listener.of("end").size(), 1u);
    EXPECT_TRUE(window.is_cursor_visible());
    // The tail settles at level 50 and the behaviour stops: nothing holds the
    // parameter any more.
    settle();
    EXPECT_NEAR(knob.get_value(), 0.25, 1e-9);
    EXPECT_EQ(knob.use_behaviour().get_state(), PotBehaviour::idle);
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
