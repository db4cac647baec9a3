#include "gadu/Knob.h"
#include "gadu/MouseCompatibility.h"

#include "ControlHarness.h"

#include <gtest/gtest.h>

#include <limits>

namespace gadu
{
namespace
{

constexpr std::uint32_t kWhite = 0xFFFFFFu;
constexpr std::uint32_t kRed = 0xFF0000u;
constexpr std::int32_t kCx = 64;
constexpr std::int32_t kCy = 64;

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
    return gadu_test::make_apic(1, 8, 21, 21, {kWhite}, pixels);
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
class KnobDrawTest : public gadu_test::ControlHarness
{
protected:
    void SetUp() override
    {
        MouseCompatibility::use_instance().set_mode(MouseCompatibility::kEndlessDrag);
        body_pic = load(pointer_body());
        Picture body(body_pic);
        body.set_hot_spot(10, 10);
        Picture arrow(load(gadu_test::solid_apic(5, 5, kRed, 255)));
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
    EXPECT_DOUBLE_EQ(knob.get_angle(), -1.5 * 3.14159265358979323846);
}

TEST_F(KnobDrawTest, TheDragPointerShowsOnlyDuringADragWithTheKnobsOpacity)
{
    const std::uint32_t bg = gadu_test::kBackgroundColour;
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
    window.paint();
    EXPECT_EQ(screen_at(kCx + 2, kCy + 2), kRed);
    window.release(kCx, kCy, mouse_button::left);
    window.paint();
    EXPECT_EQ(screen_at(kCx + 2, kCy + 2), bg);
    EXPECT_TRUE(is_white(screen_at(kCx, kCy - 6)));
}

TEST_F(KnobDrawTest, EachHighlightStateThatIsOnDrawsItsPicture)
{
    Picture glow(load(gadu_test::solid_apic(3, 3, kRed, 255)));
    glow.set_hot_spot(-2, -2);
    for (std::int32_t state : {0, 3})
    {
        knob.set_highlight_picture(state, glow);
        knob.set_highlight_state(state, true);
        window.paint_all();
        EXPECT_EQ(screen_at(kCx + 3, kCy + 3), kRed) << state;
        knob.set_highlight_state(state, false);
        window.paint_all();
        EXPECT_EQ(screen_at(kCx + 3, kCy + 3), gadu_test::kBackgroundColour) << state;
    }
}

TEST_F(KnobDrawTest, ARedrawCoversTheTurnedBodyBeyondTheHitRectangle)
{
    knob.set_hit_rect(Rect{-2, -2, 2, 2});
    show(0.0);
    show(1.0 / 3.0);
    EXPECT_EQ(screen_at(kCx, kCy - 6), gadu_test::kBackgroundColour);
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
    EXPECT_EQ(screen_at(kCx, kCy - 6), gadu_test::kBackgroundColour);
    // Value 2/3 (half a turn) lies in the middle of layer 1: drawn unturned.
    show(2.0 / 3.0);
    EXPECT_TRUE(is_white(screen_at(kCx, kCy - 6)));

    knob.set_layer_count(1);
    knob.set_body_picture(frame);
    knob.set_angle(std::numeric_limits<float>::quiet_NaN(), -0.75f);
    show(0.5);
    EXPECT_TRUE(is_white(screen_at(kCx, kCy - 6)));
}

}  // namespace
}  // namespace gadu
