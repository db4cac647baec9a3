#include "EditorScreen.h"
#include "Layout.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

constexpr double pi = 3.14159265358979323846;
constexpr std::uint32_t grey = 0x00808080;

const artgen::EditorScreen& screen()
{
    static const artgen::EditorScreen s;
    return s;
}

// The direction (degrees, counter-clockwise, y up) in which the white pointer
// of a knob drawn by the toolkit points, from the centroid of the white
// pixels between the drag pointer's spot and the cap's ring.
double pointer_deg(int knob, double value)
{
    const artgen::KnobLayout& k = artgen::knob_layouts[knob];
    gadu::MemoryRenderingBuffer buffer(120, 120);
    buffer.fill(grey);
    screen().draw_knob(buffer, knob, value, 60, 60);
    double sx = 0.0, sy = 0.0;
    for (int y = 0; y < 120; ++y)
    {
        for (int x = 0; x < 120; ++x)
        {
            const double dx = x - 60, dy = 60 - y, r = std::sqrt(dx * dx + dy * dy);
            if ((buffer.get_pixel(x, y) & 0xFF) >= 240 && r > k.radius * 0.4 && r < k.radius * 0.68)
            {
                sx += dx;
                sy += dy;
            }
        }
    }
    return std::atan2(sy, sx) * 180.0 / pi;
}

double wrap_deg(double d)
{
    return d - 360.0 * std::floor((d + 180.0) / 360.0);
}

}  // namespace

TEST(EditorScreen, KnobsTurnedByTheToolkitPointFromLowerLeftThroughTopToLowerRight)
{
    for (int knob = 0; knob < 4; ++knob)
    {
        SCOPED_TRACE(artgen::knob_layouts[knob].resource);
        EXPECT_NEAR(wrap_deg(pointer_deg(knob, 0.0) - 225.0), 0.0, 6.0);
        EXPECT_NEAR(wrap_deg(pointer_deg(knob, 0.5) - 90.0), 0.0, 6.0);
        EXPECT_NEAR(wrap_deg(pointer_deg(knob, 1.0) + 45.0), 0.0, 6.0);
    }
}

TEST(EditorScreen, KnobBodiesStayInsideTheirHitCircleAtEveryAngle)
{
    // Hit radii 40, 24, 24 and 32: what a knob draws must lie where it reacts.
    const double hit[4] = {40, 24, 24, 32};
    for (int knob = 0; knob < 4; ++knob)
    {
        for (double value = 0.0; value <= 1.0; value += 0.125)
        {
            gadu::MemoryRenderingBuffer buffer(120, 120);
            buffer.fill(grey);
            screen().draw_knob(buffer, knob, value, 60, 60);
            for (int y = 0; y < 120; ++y)
            {
                for (int x = 0; x < 120; ++x)
                {
                    const double dx = x - 60, dy = y - 60;
                    if (std::sqrt(dx * dx + dy * dy) > hit[knob])
                    {
                        ASSERT_EQ(buffer.get_pixel(x, y), grey) << knob << " at " << value << ": " << x << ", " << y;
                    }
                }
            }
        }
    }
}

TEST(EditorScreen, SwitchStatesChangeMostOfTheTrack)
{
    const double values[4] = {0, 0, 0, 0};
    gadu::MemoryRenderingBuffer off(artgen::screen_width, artgen::screen_height);
    gadu::MemoryRenderingBuffer on(artgen::screen_width, artgen::screen_height);
    screen().draw(off, 0, 0, values, 0, -1);
    screen().draw(on, 0, 0, values, 1, -1);
    int differ = 0, elsewhere = 0;
    for (int y = 0; y < artgen::screen_height; ++y)
    {
        for (int x = 0; x < artgen::screen_width; ++x)
        {
            const bool in_track = x >= artgen::switch_x && x < artgen::switch_x + artgen::switch_track_width
                               && y >= artgen::switch_y && y < artgen::switch_y + artgen::switch_height;
            const bool changed = off.get_pixel(x, y) != on.get_pixel(x, y);
            (in_track ? differ : elsewhere) += changed ? 1 : 0;
        }
    }
    EXPECT_GT(differ, artgen::switch_track_width * artgen::switch_height / 2);
    EXPECT_EQ(elsewhere, 0);
}

TEST(EditorScreen, TextAdvancesByTheGlyphTableWidths)
{
    gadu::MemoryRenderingBuffer buffer(200, 20);
    buffer.fill(0x00FFFFFF);
    // Space 5, and every glyph of this word at least 5 wide and at most 8.
    const std::int32_t w = screen().draw_text(buffer, "Velnor", 2, 4, 0);
    EXPECT_GE(w, 6 * 5);
    EXPECT_LE(w, 6 * 8);
    EXPECT_EQ(screen().draw_text(buffer, " ", 0, 0, 0), 5);
    int inked = 0;
    for (int x = 2; x < 2 + w; ++x)
    {
        for (int y = 4; y < 16; ++y)
        {
            inked += buffer.get_pixel(x, y) == 0 ? 1 : 0;
        }
    }
    EXPECT_GT(inked, 30);
}
