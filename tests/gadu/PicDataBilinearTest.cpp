// Drawing at fractional positions and turned: hand-computed weights for small
// cases, and for turned pictures properties that hold whatever the loops look
// like: a turn by a hair is the translation, quarter turns move whole pixels.
#include "gadu/MemoryRenderingBuffer.h"
#include "gadu/PicDataFactory.h"
#include "gadu/Picture.h"

#include "ApicImage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <tuple>
#include <vector>

namespace gadu
{
namespace
{

using gadu_test::HeldPicture;
using gadu_test::pixels_of;
using Pixels = std::vector<std::uint32_t>;

// The largest difference of two buffers of one size in any colour channel.
int largest_difference(const MemoryRenderingBuffer& a, const MemoryRenderingBuffer& b)
{
    int largest = 0;
    for (int i = 0; i < 4 * a.get_width() * a.get_height(); ++i)
    {
        largest = i % 4 == 3 ? largest : std::max(largest, std::abs(a.pixels()[i] - b.pixels()[i]));
    }
    return largest;
}

std::uint32_t grey(std::uint32_t v)
{
    return v * 0x010101u;
}

TEST(DrawSubpixelTest, HorizontalQuarterSplitsWeights192And64)
{
    // White, alpha 255 then 128, over black.
    const HeldPicture pic(gadu_test::make_apic(1, 8, 2, 1, {0x00FFFFFFu}, {0, 255, 0, 128}));
    MemoryRenderingBuffer buffer(3, 1);
    EXPECT_EQ(pic->draw_subpixel(0.25, 0.0, 3, 1, buffer, pic->get_bounds(), 1.0f), 1);
    // 255 x (255 x 192 + 128 x 64) >> 16 = 222; 255 x 128 x 192 >> 16 = 95.
    EXPECT_EQ(pixels_of(buffer), (Pixels{grey(222), grey(95), 0}));

    // Half opacity: W = 128, weights 96 and 32; at a whole offset all 128 on
    // one pixel: 255 x 255 x 128 >> 16 = 127.
    MemoryRenderingBuffer faded(1, 1);
    pic->draw_subpixel(0.25, 0.0, 1, 1, faded, pic->get_bounds(), 0.5f);
    EXPECT_EQ(faded.get_pixel(0, 0), grey(111));
    MemoryRenderingBuffer whole(1, 1);
    pic->draw_subpixel(0.0, 0.0, 1, 1, whole, pic->get_bounds(), 0.5f);
    EXPECT_EQ(whole.get_pixel(0, 0), grey(127));

    // Left of the picture: buffer pixel 0 sees only the picture's left pixel,
    // as its right neighbour, with weight 64.
    MemoryRenderingBuffer left(3, 1);
    pic->draw_subpixel(-0.75, 0.0, 3, 1, left, pic->get_bounds(), 1.0f);
    EXPECT_EQ(pixels_of(left), (Pixels{grey(63), grey(222), grey(95)}));
}

TEST(DrawSubpixelTest, DirectAlphaPictureBlendsWithTheSameWeights)
{
    // Blue 50, green 100, red 200 at alpha 128, half a pixel left, over blue
    // 100, green 20, red 250: each buffer pixel takes it with weight 128,
    // (s - d) x 128 x 128 >> 16, a quarter of the way, floored.
    const HeldPicture pic(gadu_test::make_apic(1, 24, 1, 1, {}, {50, 100, 200, 128}));
    MemoryRenderingBuffer buffer(3, 1);
    buffer.fill(0x7FFA1464u);
    pic->draw_subpixel(-0.5, 0.0, 3, 1, buffer, pic->get_bounds(), 1.0f);
    EXPECT_EQ(pixels_of(buffer), (Pixels{0x7FED2857u, 0x7FED2857u, 0x7FFA1464u}));
}

TEST(DrawSubpixelTest, OpaquePicturesSnapToTheFlooredPixel)
{
    const HeldPicture pic(gadu_test::make_apic(0, 8, 2, 1, {0x00102030u, 0x00405060u}, {0, 1}));
    MemoryRenderingBuffer buffer(2, 2);
    // (0.9, -0.1) floors to (0, -1): picture row 0 lands on buffer row 1.
    pic->draw_subpixel(0.9, -0.1, 2, 2, buffer, pic->get_bounds(), 0.5f);
    EXPECT_EQ(pixels_of(buffer), (Pixels{0u, 0u, 0x00102030u, 0x00405060u}));
    pic->draw_add_at(0.9, -0.1, 2, 2, buffer, pic->get_bounds());
    EXPECT_EQ(pixels_of(buffer), (Pixels{0u, 0u, 0x00204060u, 0x0080A0C0u}));
    pic->draw_multiply_at(0.25, -0.9, 2, 2, buffer, pic->get_bounds());
    EXPECT_EQ(pixels_of(buffer), (Pixels{0u, 0u, 0x00020812u, 0x00203248u}));
}

TEST(DrawSubpixelTest, DiagonalHalfGivesFourEqualWeights)
{
    const HeldPicture pic(gadu_test::make_apic(1, 8, 2, 2, {0x00FFFFFFu}, {0, 255, 0, 0, 0, 0, 0, 255}));
    MemoryRenderingBuffer buffer(2, 2);
    pic->draw_subpixel(0.5, 0.5, 2, 2, buffer, pic->get_bounds(), 1.0f);
    // 255 x 255 x (64 + 64) >> 16 = 127; the others see only (1, 1) with 64.
    EXPECT_EQ(pixels_of(buffer), (Pixels{grey(127), grey(63), grey(63), grey(63)}));
    // A source rectangle of the left column or the top row, without (1, 1),
    // which lies inside the picture: only (0, 0) at weight 64 is left.
    for (const Rect source : {Rect{0, 0, 1, 2}, Rect{0, 0, 2, 1}})
    {
        MemoryRenderingBuffer limited(2, 2);
        pic->draw_subpixel(0.5, 0.5, 2, 2, limited, source, 1.0f);
        EXPECT_EQ(pixels_of(limited), (Pixels{grey(63), 0u, 0u, 0u})) << source.x2 << " x " << source.y2;
    }
}

// A 5 x 4 picture of both alpha kinds with colours and alphas that differ
// everywhere, alpha 0 and 255 included.
HeldPicture patterned(std::int32_t bits)
{
    std::vector<std::uint8_t> pixels;
    for (int i = 0; i < 20; ++i)
    {
        const auto alpha = static_cast<std::uint8_t>(i == 3 ? 0 : i % 5 == 0 ? 255 : 37 * i % 256);
        const auto b = [](int v) { return static_cast<std::uint8_t>(v); };
        const std::vector<std::uint8_t> pixel = bits == 8 ? std::vector<std::uint8_t>{b(i % 4), alpha}
                                                          : std::vector<std::uint8_t>{b(11 * i), b(250 - 9 * i),
                                                                                      b(60 + 7 * i), alpha};
        pixels.insert(pixels.end(), pixel.begin(), pixel.end());
    }
    const std::vector<std::uint32_t> palette = {0x00102030u, 0x00F0E0D0u, 0x0080FF00u, 0x00FF0080u};
    return HeldPicture(gadu_test::make_apic(1, bits, 5, 4, bits == 8 ? palette : std::vector<std::uint32_t>{}, pixels));
}

// A buffer whose every pixel differs, so that no blend can hide.
MemoryRenderingBuffer gradient(std::int32_t size)
{
    MemoryRenderingBuffer buffer(size, size);
    for (int y = 0; y < size; ++y)
    {
        for (int x = 0; x < size; ++x)
        {
            buffer.set_pixel(x, y, static_cast<std::uint32_t>(0x55 << 24 | (x * 9) << 16 | (y * 11) << 8 | x * y));
        }
    }
    return buffer;
}

TEST(DrawSubpixelTest, WholeOffsetsDrawExactlyLikeDraw)
{
    for (std::int32_t bits : {8, 24})
    {
        const HeldPicture p = patterned(bits);
        for (const auto& [x, y] : {std::pair{3.0, 4.0}, {0.0, 0.0}, {-2.0, 1.0}, {3.000000001, -1.0}})
        {
            MemoryRenderingBuffer subpixel = gradient(8);
            MemoryRenderingBuffer plain = gradient(8);
            p->draw_subpixel(-x, -y, 8, 8, subpixel, p->get_bounds(), 1.0f);
            p->draw(Rect::of_size(std::lround(-x), std::lround(-y), 8, 8), plain, p->get_bounds());
            EXPECT_EQ(pixels_of(subpixel), pixels_of(plain)) << bits << " bits at " << x << ", " << y;
        }
    }
}

// The turning path by a hair of an angle samples where the translating path
// samples, so the two agree to the rounding of their weights (the turning
// path's fractions have 8 bits): per channel by 2 at most, for both kinds,
// source rectangles and opacities.
TEST(DrawRotatedTest, AHairOfATurnDrawsWhatTheTranslationDraws)
{
    for (std::int32_t bits : {8, 24})
    {
        const HeldPicture p = patterned(bits);
        for (const Rect source : {p->get_bounds(), Rect{1, 1, 4, 3}})
        {
            for (const auto& [ox, oy, opacity] : {std::tuple{0.25f, 0.5f, 1.0f}, {-1.75f, -2.125f, 0.6f},
                                                   {0.875f, -0.375f, 1.0f}, {-3.5f, 1.25f, 0.3f}})
            {
                MemoryRenderingBuffer turned = gradient(8);
                MemoryRenderingBuffer moved = gradient(8);
                EXPECT_EQ(p->draw_rotated_faded(ox, oy, 8, 8, 1e-7f, turned, source, opacity), 1);
                p->draw_subpixel(ox, oy, 8, 8, moved, source, opacity);
                EXPECT_LE(largest_difference(turned, moved), 2) << bits << " bits, " << ox << ", " << oy;
            }
        }
    }
}

// The picture turned by a whole quarter, pixel for pixel, as the screen shows it:
// the buffer pixel at (u, v) from the pivot shows the picture pixel at the hot
// spot plus (u, v) turned clockwise by the angle (the picture turns counter-
// clockwise).
TEST(DrawRotatedTest, QuarterTurnsPutEveryPixelWhereTheScreenExpectsIt)
{
    const HeldPicture p = patterned(8);
    Picture picture(p.pic.get());
    picture.set_hot_spot(2, 1);
    const int pivot_x = 6, pivot_y = 5;
    const int cosines[4] = {1, 0, -1, 0};
    const int sines[4] = {0, 1, 0, -1};
    for (int quarter = 0; quarter < 4; ++quarter)
    {
        MemoryRenderingBuffer drawn = gradient(12);
        MemoryRenderingBuffer expected = gradient(12);
        picture.draw_rotated(-pivot_x, -pivot_y, 12, 12, quarter * 3.14159265358979323846 / 2, drawn);
        // Exact expectation: one alpha draw of the turned picture pixel.
        for (int by = 0; by < 12; ++by)
        {
            for (int bx = 0; bx < 12; ++bx)
            {
                const int u = bx - pivot_x, v = by - pivot_y;
                const int i = 2 + u * cosines[quarter] - v * sines[quarter];
                const int j = 1 + u * sines[quarter] + v * cosines[quarter];
                if (p->get_bounds().contains(i, j))
                {
                    p->draw(Rect{i - bx, j - by, i - bx + 12, j - by + 12}, expected, Rect{i, j, i + 1, j + 1});
                }
            }
        }
        // Float cosines of quarter angles are a hair off 0 and 1, so a sample
        // may fall just short of its pixel and take 1/256 from a neighbour:
        // with the two rounding steps that is at most 3 per channel. (The
        // rotated path blends colours only; a plain draw of an opaque pixel
        // also writes the fourth byte.)
        EXPECT_LE(largest_difference(drawn, expected), 3) << "quarter " << quarter;
    }
}

TEST(DrawRotatedTest, TinyAnglesTranslateAndOpaquePicturesDoNotTurn)
{
    const HeldPicture p = patterned(24);
    Picture picture(p.pic.get());
    picture.set_hot_spot(2, 2);
    MemoryRenderingBuffer turned = gradient(8);
    MemoryRenderingBuffer placed = gradient(8);
    // Below 1e-9 the rotated path (which would blend with weight 256, unlike
    // the 24-bit draw) is never taken.
    picture.draw_rotated(-4.0, -3.0, 8, 8, 5e-10, turned);
    picture.draw(Rect{-4, -3, 4, 5}, placed);
    EXPECT_EQ(pixels_of(turned), pixels_of(placed));

    const HeldPicture opaque(gadu_test::make_apic(0, 8, 2, 2, {0x00FFFFFFu}, {0, 0, 0, 0}));
    MemoryRenderingBuffer untouched(4, 4);
    EXPECT_EQ(opaque->draw_rotated(0.0f, 0.0f, 4, 4, 1.0f, untouched, opaque->get_bounds()), 0);
    EXPECT_EQ(opaque->draw_rotated_faded(0.0f, 0.0f, 4, 4, 1.0f, untouched, opaque->get_bounds(), 1.0f), 0);
    // Not a number is no angle: nothing is drawn.
    EXPECT_EQ(p->draw_rotated(0.0f, 0.0f, 4, 4, std::nanf(""), untouched, p->get_bounds()), 0);
    EXPECT_EQ(pixels_of(untouched), Pixels(16, 0u));
}

}  // namespace
}  // namespace gadu
