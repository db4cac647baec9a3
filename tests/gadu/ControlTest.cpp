// The toolkit's controls as the editor sets them up: the knob's gestures,
// drawing and values, and the switch, each in an off-screen window of
// 128 x 128 pixels with a plain background and one control group, a pinned
// clock that moves with the window's, and a listener that writes down what a
// control tells it.
#include "gadu/BackgroundItem.h"
#include "gadu/CtrlGroupItem.h"
#include "gadu/DefaultEventListener.h"
#include "gadu/FlipFlop.h"
#include "gadu/Knob.h"
#include "gadu/MouseCompatibility.h"
#include "gadu/OffscreenWindow.h"
#include "gadu/PicDataFactory.h"
#include "gadu/ShowObject.h"
#include "sys/ClockPin.h"

#include "ApicImage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

namespace gadu
{
namespace
{

using gadu_test::HeldPicture;
using gadu_test::make_apic;

struct ListenerEvent
{
    std::string what;
    double value;
    std::int32_t level;
};

class RecordingListener : public DefaultEventListener
{
public:
    bool check(std::int32_t level) override
    {
        events.push_back({"check", 0.0, level});
        return level >= refuse_below;
    }
    void begin(std::int32_t level) override { events.push_back({"begin", 0.0, level}); }
    void end(std::int32_t level) override { events.push_back({"end", 0.0, level}); }
    double value(double v, std::int32_t level) override
    {
        events.push_back({"value", v, level});
        return v;
    }

    std::vector<ListenerEvent> of(const std::string& what) const
    {
        std::vector<ListenerEvent> found;
        std::copy_if(events.begin(), events.end(), std::back_inserter(found),
                     [&](const ListenerEvent& e) { return e.what == what; });
        return found;
    }

    // The kinds of the events in order, a letter each, a run of one kind as
    // one letter: "bvev" is a gesture and a tail; checks only when asked for.
    std::string outline(bool with_checks = false) const
    {
        std::string seen;
        for (const ListenerEvent& e : events)
        {
            if ((with_checks || e.what != "check") && (seen.empty() || seen.back() != e.what[0]))
            {
                seen += e.what[0];
            }
        }
        return seen;
    }

    std::vector<ListenerEvent> events;
    // check answers false below this level.
    std::int32_t refuse_below = 0;
};

constexpr std::uint32_t kBackgroundColour = 0x203040u;
constexpr std::int32_t kScreen = 128;

// A picture of one colour, opaque (kind 0) or with the given alpha (kind 1).
std::vector<std::uint8_t> solid_apic(std::int32_t width, std::int32_t height, std::uint32_t colour,
                                            std::int32_t alpha = -1)
{
    std::vector<std::uint8_t> pixels;
    for (std::int32_t i = 0; i < width * height; ++i)
    {
        pixels.push_back(0);
        if (alpha >= 0)
        {
            pixels.push_back(static_cast<std::uint8_t>(alpha));
        }
    }
    return make_apic(alpha >= 0 ? 1 : 0, 8, width, height, {colour}, pixels);
}

class ControlHarness : public ::testing::Test
{
protected:
    ControlHarness()
    {
        background.set_picture(Picture(load(solid_apic(kScreen, kScreen, kBackgroundColour))));
        background.set_position(0, 0);
        group.set_position(0, 0);
        window.set_background_root(&background);
        window.set_control_root(&group);
        window.set_time(now);
    }

    // A picture of the resource's bytes, both kept for the test's life.
    const PicDataInterface* load(std::vector<std::uint8_t> bytes)
    {
        return pictures.emplace_back(std::move(bytes)).pic.get();
    }

    void open()
    {
        ASSERT_EQ(window.open(nullptr), 0);
        background.handle_message(ShowObject(true));
        group.handle_message(ShowObject(true));
        window.paint_all();
    }

    // Lets time pass: the window's timer service runs every 2 ms, and the
    // clock the controls read follows.
    void wait(double seconds)
    {
        window.run_timers(seconds);
        now += seconds;
        pin.set_seconds(now);
    }

    // Moves the cursor by (dx, dy) from wherever it is now.
    void move_by(std::int32_t dx, std::int32_t dy)
    {
        const CaptureState::Point at = window.get_cursor();
        window.move(at.x + dx, at.y + dy);
    }

    std::uint32_t screen_at(std::int32_t x, std::int32_t y) const
    {
        return window.use_screen()->get_pixel(x, y) & 0xFFFFFFu;
    }

    double now = 100.0;
    sys::ClockPin pin{100.0};
    // The bytes of a picture move with the list, but never move in memory.
    std::vector<HeldPicture> pictures;
    OffscreenWindow window{kScreen, kScreen};
    BackgroundItem background;
    CtrlGroupItem group;
    RecordingListener listener;
};

constexpr double kPi = 3.14159265358979323846;
constexpr std::int32_t kCx = 64;
constexpr std::int32_t kCy = 64;

// A knob set up as the editor sets its knobs: centred at (64, 64), a hit
// square of 80 pixels, one range per 256 pixels, fine factor 1/32.
class KnobMouseTest : public ControlHarness
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
    ASSERT_EQ(listener.of("value").size(), 1u);
    EXPECT_EQ(listener.of("value")[0].level, 1);
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

// Another window taking the mouse, the knob being hidden, or the host
// refusing the change: the gesture ends, the mouse is let go, and once the
// tail has settled at level 50 nothing holds the parameter any more.
TEST_F(KnobMouseTest, AGestureEndsWhenTheMouseIsTakenTheKnobHiddenOrTheChangeRefused)
{
    window.press(kCx, kCy, mouse_button::left);
    drag(64, 0, -1);
    window.take_capture_away();
    ASSERT_EQ(listener.of("end").size(), 1u);
    EXPECT_TRUE(window.is_cursor_visible());
    wait(3.0);
    EXPECT_NEAR(knob.get_value(), 0.25, 1e-9);
    EXPECT_EQ(state(), PotBehaviour::idle);
    EXPECT_EQ(listener.of("value").back().level, 50);
    const std::size_t begins = listener.of("begin").size();
    wait(1.0);
    EXPECT_EQ(listener.of("begin").size(), begins);

    window.press(kCx, kCy, mouse_button::left);
    drag(10, 0, -1);
    knob.handle_message(ShowObject(false));
    EXPECT_EQ(state(), PotBehaviour::idle);
    EXPECT_FALSE(window.holds_capture());
    knob.handle_message(ShowObject(true));

    listener.refuse_below = 1000;
    const double kept = knob.get_value();
    window.press(kCx, kCy, mouse_button::left);
    drag(20, 0, -1);
    EXPECT_DOUBLE_EQ(knob.get_value(), kept);
    EXPECT_EQ(state(), PotBehaviour::idle);
    EXPECT_FALSE(window.holds_capture());
    EXPECT_TRUE(window.is_cursor_visible());
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

constexpr std::uint32_t kWhite = 0xFFFFFFu;
constexpr std::uint32_t kRed = 0xFF0000u;

// A knob body of 21 x 21 pixels, transparent but for a pointer from the top
// edge down to just above the centre, turned about the centre.
std::vector<std::uint8_t> pointer_body()
{
    std::vector<std::uint8_t> pixels;
    for (int y = 0; y < 21; ++y)
    {
        for (int x = 0; x < 21; ++x)
        {
            pixels.push_back(0);
            pixels.push_back(x == 10 && y < 10 ? 255 : 0);
        }
    }
    return make_apic(1, 8, 21, 21, {kWhite}, pixels);
}

std::uint32_t channel(std::uint32_t colour, int shift)
{
    return (colour >> shift) & 0xFFu;
}

// Turned pictures are sampled between pixels: white may come out a step short.
bool is_white(std::uint32_t colour)
{
    return channel(colour, 0) >= 0xF8 && channel(colour, 8) >= 0xF8 && channel(colour, 16) >= 0xF8;
}

// Angle offset 0 and span -3/4 turn: value 0 points up, 1/3 right, 2/3 down.
class KnobDrawTest : public ControlHarness
{
protected:
    void SetUp() override
    {
        MouseCompatibility::use_instance().set_mode(MouseCompatibility::kEndlessDrag);
        body_pic = load(pointer_body());
        Picture body(body_pic);
        body.set_hot_spot(10, 10);
        Picture arrow(load(solid_apic(5, 5, kRed, 255)));
        arrow.set_hot_spot(2, 2);
        knob.set_body_picture(body);
        knob.set_drag_pointer_picture(arrow);
        knob.set_rotate_body(true);
        knob.set_angle(0.0f, -0.75f);
        knob.set_pixels_per_range(256);
        knob.set_hit_rect(Rect{-12, -12, 12, 12});
        knob.set_position(kCx, kCy);
        group.add_control(knob);
        open();
    }

    void show(double value)
    {
        knob.set_value_from_param(value, 100);
        window.paint();
    }

    const PicDataInterface* body_pic = nullptr;
    Knob knob;
};

TEST_F(KnobDrawTest, TheBodyTurnsClockwiseWithTheValue)
{
    // Where the pointer ends, and nowhere else: up, right, along the diagonal
    // halfway between right and down, down, left.
    const std::pair<int, int> ends[] = {{0, -6}, {6, 0}, {5, 5}, {0, 6}, {-6, 0}};
    const double values[] = {0.0, 1.0 / 3.0, 0.5, 2.0 / 3.0, 1.0};
    for (int i = 0; i < 5; ++i)
    {
        show(values[i]);
        for (int j = 0; j < 5; ++j)
        {
            EXPECT_EQ(is_white(screen_at(kCx + ends[j].first, kCy + ends[j].second)), i == j) << values[i] << " " << j;
        }
    }
    EXPECT_DOUBLE_EQ(knob.get_angle(), -1.5 * kPi);
}

TEST_F(KnobDrawTest, TheDragPointerShowsOnlyDuringADragWithTheKnobsOpacity)
{
    const std::uint32_t bg = kBackgroundColour;
    show(0.0);
    EXPECT_EQ(screen_at(kCx + 2, kCy + 2), bg);
    window.press(kCx, kCy, mouse_button::left);
    window.paint();
    EXPECT_EQ(screen_at(kCx + 2, kCy + 2), kRed);

    knob.set_opacity(0.5f);
    window.paint();
    const std::uint32_t half = screen_at(kCx + 2, kCy + 2);
    EXPECT_NEAR(channel(half, 16), (0xFF + channel(bg, 16)) / 2, 2);
    EXPECT_NEAR(channel(half, 0), channel(bg, 0) / 2, 2);
    const std::uint32_t body = screen_at(kCx, kCy - 6);
    EXPECT_NEAR(channel(body, 8), (0xFF + channel(bg, 8)) / 2, 2);

    // Below one step of alpha nothing of the knob is drawn.
    knob.set_opacity(0.001f);
    window.paint();
    EXPECT_EQ(screen_at(kCx + 2, kCy + 2), bg);
    EXPECT_EQ(screen_at(kCx, kCy - 6), bg);

    knob.set_opacity(1.0f);
    window.release(kCx, kCy, mouse_button::left);
    window.paint();
    EXPECT_EQ(screen_at(kCx + 2, kCy + 2), bg);
    EXPECT_TRUE(is_white(screen_at(kCx, kCy - 6)));
}

TEST_F(KnobDrawTest, EachHighlightStateThatIsOnDrawsItsPicture)
{
    Picture glow(load(solid_apic(3, 3, kRed, 255)));
    glow.set_hot_spot(-2, -2);
    for (std::int32_t state : {0, 3})
    {
        knob.set_highlight_picture(state, glow);
        knob.set_highlight_state(state, true);
        window.paint_all();
        EXPECT_EQ(screen_at(kCx + 3, kCy + 3), kRed) << state;
        knob.set_highlight_state(state, false);
        window.paint_all();
        EXPECT_EQ(screen_at(kCx + 3, kCy + 3), kBackgroundColour) << state;
    }
}

TEST_F(KnobDrawTest, ARedrawCoversTheTurnedBodyBeyondTheHitRectangle)
{
    knob.set_hit_rect(Rect{-2, -2, 2, 2});
    show(0.0);
    show(1.0 / 3.0);
    EXPECT_EQ(screen_at(kCx, kCy - 6), kBackgroundColour);
    EXPECT_TRUE(is_white(screen_at(kCx + 6, kCy)));
}

// Layers: two frames over the whole turn, picked by the angle. A broken
// configuration (angles that are not numbers) draws the body unturned and no
// layer, instead of indexing the layer list with garbage.
TEST_F(KnobDrawTest, TheAnglePicksALayerAndABrokenAngleNone)
{
    knob.clear_picture(Knob::body);
    knob.set_layer_count(2);
    Picture frame(body_pic);
    frame.set_hot_spot(10, 10);
    knob.set_layer_picture(1, frame);
    // Value 0 (angle 0) lies in the middle of layer 0, which has no picture.
    show(0.0);
    EXPECT_EQ(screen_at(kCx, kCy - 6), kBackgroundColour);
    // Value 2/3 (half a turn) lies in the middle of layer 1: drawn unturned.
    show(2.0 / 3.0);
    EXPECT_TRUE(is_white(screen_at(kCx, kCy - 6)));

    knob.set_layer_count(1);
    knob.set_body_picture(frame);
    knob.set_angle(std::numeric_limits<float>::quiet_NaN(), -0.75f);
    show(0.5);
    EXPECT_TRUE(is_white(screen_at(kCx, kCy - 6)));
}

// A listener that halves what reaches its value hooks and adds 0.01 on the
// way forward, so the order of the hooks shows in the stored value.
class ShapingListener : public RecordingListener
{
public:
    double value(double v, std::int32_t level) override { return RecordingListener::value(v, level) / 2.0; }
    double value_from_param(double v, std::int32_t /*level*/) override { return v / 4.0; }
    double forward(double v, std::int32_t /*level*/) override { return v + 0.01; }
};

class ControlValueTest : public ControlHarness
{
protected:
    void SetUp() override
    {
        knob.set_hit_rect(Rect{-10, -10, 10, 10});
        knob.set_position(20, 20);
        knob.set_listener(&shaping);
        group.add_control(knob);
        open();
    }

    ShapingListener shaping;
    Knob knob;
};

TEST_F(ControlValueTest, AUserChangePassesCheckValueAndForwardInThatOrder)
{
    EXPECT_TRUE(knob.set_value(0.6, 200));
    EXPECT_DOUBLE_EQ(knob.get_value(), 0.31);
    EXPECT_EQ(shaping.outline(true), "cv");
    EXPECT_EQ(shaping.events.back().level, 200);
    EXPECT_EQ(window.paint(), (Rect{10, 10, 30, 30}));

    // A change from the parameter side never reaches the user-side hook.
    EXPECT_TRUE(knob.set_value_from_param(0.8, 100));
    EXPECT_DOUBLE_EQ(knob.get_value(), 0.21);
    EXPECT_EQ(shaping.of("value").size(), 1u);
}

TEST_F(ControlValueTest, ARefusalOrANonNumberChangesNothing)
{
    knob.set_value(0.5, 200);
    window.paint();
    shaping.refuse_below = 100;
    EXPECT_FALSE(knob.set_value(0.9, 50));
    EXPECT_FALSE(knob.set_value_from_param(0.9, 1));
    shaping.refuse_below = 0;
    EXPECT_FALSE(knob.set_value(std::numeric_limits<double>::quiet_NaN(), 200));
    EXPECT_FALSE(knob.set_value_from_param(std::nan(""), 200));
    EXPECT_DOUBLE_EQ(knob.get_value(), 0.26);
    EXPECT_TRUE(window.paint().is_empty());

    // Out of range is pulled in before any hook sees it.
    shaping.events.clear();
    knob.set_value(7.0, 200);
    EXPECT_DOUBLE_EQ(shaping.of("value")[0].value, 1.0);
}

TEST_F(ControlValueTest, GesturesAskBeforeTheyBeginAndAlwaysEnd)
{
    knob.touch(200);
    knob.release(200);
    shaping.refuse_below = 300;
    knob.touch(200);
    knob.release(200);
    EXPECT_EQ(shaping.outline(true), "cbece");
}

TEST_F(ControlValueTest, ChangingTheListenerFromItsOwnHookIsRefused)
{
    class Swapper : public RecordingListener
    {
    public:
        double forward(double v, std::int32_t /*level*/) override
        {
            use_control()->set_listener(nullptr);
            return v;
        }
    } swapper;
    knob.set_listener(&swapper);
    EXPECT_THROW(knob.set_value(0.5, 200), std::runtime_error);
    EXPECT_EQ(knob.use_listeners().size(), 1u);
    EXPECT_FALSE(knob.is_dispatching());
}

constexpr std::uint32_t kOff = 0xC00000u;
constexpr std::uint32_t kOn = 0x00C000u;

// The editor's switch: 39 x 25 at (40, 30), two states, 0.1 s to change. The
// second state's picture is narrower and sits 8 pixels to the right, by its
// hot spot.
class FlipFlopTest : public ControlHarness
{
protected:
    void SetUp() override
    {
        on_pic = load(solid_apic(31, 25, kOn));
        Picture on(on_pic);
        on.set_hot_spot(-8, 0);
        flip.set_state_picture(0, Picture(load(solid_apic(39, 25, kOff))));
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
    EXPECT_EQ(screen_at(41, 40), kBackgroundColour);
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
