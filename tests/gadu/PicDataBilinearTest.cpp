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
#include <memory>
#include <tuple>
#include <vector>

namespace gadu
{
namespace
{

std::unique_ptr<PicDataInterface> make(const std::vector<std::uint8_t>& bytes)
{
    return PicDataFactory::use_instance().create_from_bytes(bytes.data(), bytes.size());
}

std::vector<std::uint32_t> row_of(const MemoryRenderingBuffer& buffer, int y)
{
    std::vector<std::uint32_t> out;
    for (int x = 0; x < buffer.get_width(); ++x)
    {
        out.push_back(buffer.get_pixel(x, y));
    }
    return out;
}

std::uint32_t grey(std::uint32_t v)
{
    return v * 0x010101u;
}

TEST(DrawSubpixelTest, HorizontalQuarterSplitsWeights192And64)
{
    // White, alpha 255 then 128, over black.
    const auto bytes = gadu_test::make_apic(1, 8, 2, 1, {0x00FFFFFFu}, {0, 255, 0, 128});
    const auto pic = make(bytes);
    MemoryRenderingBuffer buffer(3, 1);
    EXPECT_EQ(pic->draw_subpixel(0.25, 0.0, 3, 1, buffer, pic->get_bounds(), 1.0f), 1);
    // 255 x (255 x 192 + 128 x 64) >> 16 = 222; 255 x 128 x 192 >> 16 = 95.
    EXPECT_EQ(row_of(buffer, 0), (std::vector<std::uint32_t>{grey(222), grey(95), 0}));

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
    EXPECT_EQ(row_of(left, 0), (std::vector<std::uint32_t>{grey(63), grey(222), grey(95)}));
}

TEST(DrawSubpixelTest, DirectAlphaPictureBlendsWithTheSameWeights)
{
    // Blue 50, green 100, red 200 at alpha 128, half a pixel left, over blue
    // 100, green 20, red 250: each buffer pixel takes it with weight 128,
    // (s - d) x 128 x 128 >> 16, a quarter of the way, floored.
    const auto bytes = gadu_test::make_apic(1, 24, 1, 1, {}, {50, 100, 200, 128});
    const auto pic = make(bytes);
    MemoryRenderingBuffer buffer(3, 1);
    buffer.fill(0x7FFA1464u);
    pic->draw_subpixel(-0.5, 0.0, 3, 1, buffer, pic->get_bounds(), 1.0f);
    EXPECT_EQ(row_of(buffer, 0), (std::vector<std::uint32_t>{0x7FED2857u, 0x7FED2857u, 0x7FFA1464u}));
}

TEST(DrawSubpixelTest, OpaquePicturesSnapToTheFlooredPixel)
{
    const auto bytes = gadu_test::make_apic(0, 8, 2, 1, {0x00102030u, 0x00405060u}, {0, 1});
    const auto pic = make(bytes);
    MemoryRenderingBuffer buffer(2, 2);
    // (0.9, -0.1) floors to (0, -1): picture row 0 lands on buffer row 1.
    pic->draw_subpixel(0.9, -0.1, 2, 2, buffer, pic->get_bounds(), 0.5f);
    EXPECT_EQ(row_of(buffer, 1), (std::vector<std::uint32_t>{0x00102030u, 0x00405060u}));
    pic->draw_add_at(0.9, -0.1, 2, 2, buffer, pic->get_bounds());
    EXPECT_EQ(row_of(buffer, 1), (std::vector<std::uint32_t>{0x00204060u, 0x0080A0C0u}));
    pic->draw_multiply_at(0.25, -0.9, 2, 2, buffer, pic->get_bounds());
    EXPECT_EQ(row_of(buffer, 1), (std::vector<std::uint32_t>{0x00020812u, 0x00203248u}));
    EXPECT_EQ(row_of(buffer, 0), (std::vector<std::uint32_t>{0u, 0u}));
}

TEST(DrawSubpixelTest, DiagonalHalfGivesFourEqualWeights)
{
    const auto bytes = gadu_test::make_apic(1, 8, 2, 2, {0x00FFFFFFu}, {0, 255, 0, 0, 0, 0, 0, 255});
    const auto pic = make(bytes);
    MemoryRenderingBuffer buffer(2, 2);
    pic->draw_subpixel(0.5, 0.5, 2, 2, buffer, pic->get_bounds(), 1.0f);
    // 255 x 255 x (64 + 64) >> 16 = 127; the others see only (1, 1) with 64.
    EXPECT_EQ(buffer.get_pixel(0, 0), grey(127));
    EXPECT_EQ(buffer.get_pixel(1, 0), grey(63));
    EXPECT_EQ(buffer.get_pixel(0, 1), grey(63));
    EXPECT_EQ(buffer.get_pixel(1, 1), grey(63));
    // Source rectangle without (1, 1): only (0, 0) at weight 64 is left.
    MemoryRenderingBuffer limited(2, 2);
    pic->draw_subpixel(0.5, 0.5, 2, 2, limited, Rect{0, 0, 1, 2}, 1.0f);
    EXPECT_EQ(limited.get_pixel(0, 0), grey(63));
    EXPECT_EQ(limited.get_pixel(1, 0), 0u);
}

// A 5 x 4 picture of both alpha kinds with colours and alphas that differ
// everywhere, alpha 0 and 255 included.
struct Patterned
{
    explicit Patterned(std::int32_t bits)
    {
        std::vector<std::uint8_t> pixels;
        const std::vector<std::uint32_t> palette = {0x00102030u, 0x00F0E0D0u, 0x0080FF00u, 0x00FF0080u};
        for (int i = 0; i < 20; ++i)
        {
            const auto alpha = static_cast<std::uint8_t>(i == 3 ? 0 : i % 5 == 0 ? 255 : 37 * i % 256);
            if (bits == 8)
            {
                pixels.insert(pixels.end(), {static_cast<std::uint8_t>(i % 4), alpha});
            }
            else
            {
                pixels.insert(pixels.end(), {static_cast<std::uint8_t>(11 * i), static_cast<std::uint8_t>(250 - 9 * i),
                                             static_cast<std::uint8_t>(60 + 7 * i), alpha});
            }
        }
        bytes = gadu_test::make_apic(1, bits, 5, 4, bits == 8 ? palette : std::vector<std::uint32_t>{}, pixels);
        pic = make(bytes);
    }

    std::vector<std::uint8_t> bytes;
    std::unique_ptr<PicDataInterface> pic;
};

void fill_gradient(MemoryRenderingBuffer& buffer)
{
    for (int y = 0; y < buffer.get_height(); ++y)
    {
        for (int x = 0; x < buffer.get_width(); ++x)
        {
            const auto red = static_cast<std::uint32_t>(x * 9);
            const auto green = static_cast<std::uint32_t>(y * 11);
            const auto blue = static_cast<std::uint32_t>((x * y) % 256);
            buffer.set_pixel(x, y, 0x55000000u | red << 16 | green << 8 | blue);
        }
    }
}

TEST(DrawSubpixelTest, WholeOffsetsDrawExactlyLikeDraw)
{
    for (std::int32_t bits : {8, 24})
    {
        Patterned p(bits);
        const std::vector<std::pair<double, double>> offsets = {
            {3.0, 4.0}, {0.0, 0.0}, {-2.0, 1.0}, {3.000000001, -1.0}};
        for (const auto& [x, y] : offsets)
        {
            MemoryRenderingBuffer subpixel(8, 8);
            MemoryRenderingBuffer plain(8, 8);
            fill_gradient(subpixel);
            fill_gradient(plain);
            p.pic->draw_subpixel(-x, -y, 8, 8, subpixel, p.pic->get_bounds(), 1.0f);
            p.pic->draw(Rect::of_size(std::lround(-x), std::lround(-y), 8, 8), plain, p.pic->get_bounds());
            for (int by = 0; by < 8; ++by)
            {
                EXPECT_EQ(row_of(subpixel, by), row_of(plain, by)) << bits << " bits at " << x << ", " << y;
            }
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
        Patterned p(bits);
        for (const Rect source : {p.pic->get_bounds(), Rect{1, 1, 4, 3}})
        {
            for (const auto& [ox, oy, opacity] : {std::tuple{0.25f, 0.5f, 1.0f}, {-1.75f, -2.125f, 0.6f},
                                                   {0.875f, -0.375f, 1.0f}, {-3.5f, 1.25f, 0.3f}})
            {
                MemoryRenderingBuffer turned(8, 8);
                MemoryRenderingBuffer moved(8, 8);
                fill_gradient(turned);
                fill_gradient(moved);
                EXPECT_EQ(p.pic->draw_rotated_faded(ox, oy, 8, 8, 1e-7f, turned, source, opacity), 1);
                p.pic->draw_subpixel(ox, oy, 8, 8, moved, source, opacity);
                for (int y = 0; y < 8; ++y)
                {
                    for (int x = 0; x < 8; ++x)
                    {
                        for (int shift = 0; shift < 24; shift += 8)
                        {
                            ASSERT_NEAR(static_cast<int>(turned.get_pixel(x, y) >> shift & 0xFF),
                                        static_cast<int>(moved.get_pixel(x, y) >> shift & 0xFF), 2)
                                << bits << " bits, " << ox << ", " << oy << " at " << x << ", " << y;
                        }
                    }
                }
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
    Patterned p(8);
    Picture picture(p.pic.get());
    picture.set_hot_spot(2, 1);
    const int pivot_x = 6, pivot_y = 5;
    const double pi = 3.14159265358979323846;
    const int cosines[4] = {1, 0, -1, 0};
    const int sines[4] = {0, 1, 0, -1};
    for (int quarter = 0; quarter < 4; ++quarter)
    {
        MemoryRenderingBuffer drawn(12, 12);
        MemoryRenderingBuffer expected(12, 12);
        fill_gradient(drawn);
        fill_gradient(expected);
        picture.draw_rotated(-pivot_x, -pivot_y, 12, 12, quarter * pi / 2, drawn);
        // Exact expectation: one alpha draw of the turned picture pixel.
        Picture single(p.pic.get());
        for (int by = 0; by < 12; ++by)
        {
            for (int bx = 0; bx < 12; ++bx)
            {
                const int u = bx - pivot_x, v = by - pivot_y;
                const int i = 2 + u * cosines[quarter] - v * sines[quarter];
                const int j = 1 + u * sines[quarter] + v * cosines[quarter];
                if (p.pic->get_bounds().contains(i, j))
                {
                    p.pic->draw(Rect{i - bx, j - by, i - bx + 12, j - by + 12}, expected, Rect{i, j, i + 1, j + 1});
                }
            }
        }
        // Float cosines of quarter angles are a hair off 0 and 1, so a sample
        // may fall just short of its pixel and take 1/256 from a neighbour:
        // with the two rounding steps that is at most 3 per channel.
        for (int by = 0; by < 12; ++by)
        {
            for (int bx = 0; bx < 12; ++bx)
            {
                const std::uint32_t a = drawn.get_pixel(bx, by), b = expected.get_pixel(bx, by);
                // The rotated path blends colours only; a plain draw of an
                // opaque pixel also writes the fourth byte.
                for (int shift = 0; shift < 24; shift += 8)
                {
                    EXPECT_NEAR(static_cast<int>(a >> shift & 0xFF), static_cast<int>(b >> shift & 0xFF), 3)
                        << "quarter " << quarter << " at " << bx << ", " << by;
                }
            }
        }
    }
}

TEST(DrawRotatedTest, TinyAnglesTranslateAndOpaquePicturesDoNotTurn)
{
    Patterned p(24);
    Picture picture(p.pic.get());
    picture.set_hot_spot(2, 2);
    MemoryRenderingBuffer turned(8, 8);
    MemoryRenderingBuffer placed(8, 8);
    fill_gradient(turned);
    fill_gradient(placed);
    // Below 1e-9 the rotated path (which would blend with weight 256, unlike
    // the 24-bit draw) is never taken.
    picture.draw_rotated(-4.0, -3.0, 8, 8, 5e-10, turned);
    picture.draw(Rect{-4, -3, 4, 5}, placed);
    for (int y = 0; y < 8; ++y)
    {
        EXPECT_EQ(row_of(turned, y), row_of(placed, y));
    }

    const auto opaque_bytes = gadu_test::make_apic(0, 8, 2, 2, {0x00FFFFFFu}, {0, 0, 0, 0});
    const auto opaque = make(opaque_bytes);
    MemoryRenderingBuffer untouched(4, 4);
    EXPECT_EQ(opaque->draw_rotated(0.0f, 0.0f, 4, 4, 1.0f, untouched, opaque->get_bounds()), 0);
    EXPECT_EQ(opaque->draw_rotated_faded(0.0f, 0.0f, 4, 4, 1.0f, untouched, opaque->get_bounds(), 1.0f), 0);
    EXPECT_EQ(untouched.get_pixel(1, 1), 0u);
    // Not a number is no angle: nothing is drawn.
    EXPECT_EQ(p.pic->draw_rotated(0.0f, 0.0f, 4, 4, std::nanf(""), untouched, p.pic->get_bounds()), 0);
}

}  // namespace
}  // namespace gadu
