// Golden bytes of the per-pixel arithmetic, computed by hand from the blend
// formulas. The source colour is blue 50, green 100, red 200; the buffer holds
// blue 100, green 20, red 250 and 0x7F in its unused byte, so every channel
// moves in its own direction and a stray write to the fourth byte shows.
#include "gadu/MemoryRenderingBuffer.h"
#include "gadu/PicDataFactory.h"

#include "ApicImage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

namespace gadu
{
namespace
{

using gadu_test::HeldPicture;
using gadu_test::make_apic;
using Bytes = std::vector<std::uint8_t>;
using Row = std::vector<std::uint32_t>;
using Mode = std::int32_t (PicDataInterface::*)(const Rect&, RenderingBufferInterface&, const Rect&) const;

constexpr std::uint32_t kBuffer = 0x7FFA1464u;
const Row kAlphaMultiply = {kBuffer, 0x7FF91363u, 0x7FDE0D3Bu, 0x7FC30713u, 0x7FC30713u};
const Row kAlphaAdd = {kBuffer, kBuffer, 0x7FFC467Du, 0x7FFE7795u, 0x7FFF7896u};

// A picture of one row: the source colour under the alphas 0, 1, 128, 254
// and 255 (the direct kinds with the given fourth byte where without alpha).
HeldPicture one_row(std::int32_t kind, std::int32_t bits, std::uint8_t fourth_byte)
{
    Bytes pixels;
    for (std::uint8_t a : {0, 1, 128, 254, 255})
    {
        const Bytes pixel = bits == 24 ? Bytes{0x32, 0x64, 0xC8, kind == 1 ? a : fourth_byte}
                                       : kind == 1 ? Bytes{0, a} : Bytes{0};
        pixels.insert(pixels.end(), pixel.begin(), pixel.end());
    }
    return HeldPicture(make_apic(kind, bits, 5, 1, bits == 8 ? Row{0x00C86432u} : Row{}, pixels));
}

Row run(const HeldPicture& p, Mode mode, std::uint32_t fill = kBuffer)
{
    MemoryRenderingBuffer buffer(p->get_width(), p->get_height());
    buffer.fill(fill);
    const Rect all = p->get_bounds();
    ((*p.pic).*mode)(all, buffer, all);
    return gadu_test::pixels_of(buffer);
}

TEST(PicDataArithmeticTest, EachKindDrawsMultipliesAndAddsByItsOwnFormula)
{
    const struct
    {
        std::int32_t kind, bits;
        std::uint8_t fourth_byte;
        Row draw, multiply, add;
    } cases[] = {
        // Opaque pictures copy the whole word, multiply and saturate.
        {0, 8, 0, Row(5, 0x00C86432u), Row(5, 0x7FC30713u), Row(5, 0x7FFF7896u)},
        {0, 24, 0x33, Row(5, 0x33C86432u), Row(5, 0x7FC30713u), Row(5, 0x7FFF7896u)},
        // Alpha palette pictures move towards the colour by alpha / 256...
        {1, 8, 0, {kBuffer, 0x7FF91463u, 0x7FE13C4Bu, 0x7FC86332u, 0x00C86432u}, kAlphaMultiply, kAlphaAdd},
        // ...direct ones mix with the weights alpha and 255 - alpha.
        {1, 24, 0, {kBuffer, 0x7FF81463u, 0x7FE03B4Au, 0x7FC76332u, 0xFFC86432u}, kAlphaMultiply, kAlphaAdd},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(::testing::Message() << "kind " << c.kind << ", " << c.bits << " bits");
        const HeldPicture p = one_row(c.kind, c.bits, c.fourth_byte);
        EXPECT_EQ(run(p, &PicDataInterface::draw), c.draw);
        EXPECT_EQ(run(p, &PicDataInterface::draw_multiply), c.multiply);
        EXPECT_EQ(run(p, &PicDataInterface::draw_add), c.add);
    }
    // Multiplying by white loses one; adding saturates.
    const HeldPicture white(make_apic(0, 8, 1, 1, {0x00FFFFFFu}, {0}));
    EXPECT_EQ(run(white, &PicDataInterface::draw_multiply, 0x00FF0100u), Row{0x00FE0000u});
    EXPECT_EQ(run(white, &PicDataInterface::draw_add, 0x00FF0100u), Row{0x00FFFFFFu});
}

// A 3 x 2 opaque picture, pixel (x, y) of colour 0x10 * (1 + x + 3y).
std::uint32_t numbered(int x, int y)
{
    return 0x10u * static_cast<std::uint32_t>(1 + x + 3 * y);
}

TEST(PicDataClippingTest, RegionPartlyOutsideThePictureDrawsOnlyTheOverlap)
{
    const HeldPicture n(gadu_test::numbered_apic(3, 2));
    MemoryRenderingBuffer buffer(4, 4);
    buffer.fill(0xEEu);
    // Picture (0, 0) lands on buffer (2, 1): the region starts left of and above it.
    EXPECT_EQ(n->draw(Rect{-2, -1, 2, 3}, buffer, n->get_bounds()), 1);
    EXPECT_EQ(buffer.get_pixel(2, 1), numbered(0, 0));
    EXPECT_EQ(buffer.get_pixel(3, 2), numbered(1, 1));
    EXPECT_EQ(buffer.get_pixel(1, 1), 0xEEu);
    EXPECT_EQ(buffer.get_pixel(2, 0), 0xEEu);
    EXPECT_EQ(buffer.get_pixel(2, 3), 0xEEu);

    // Region starting inside the picture: the right column and bottom row.
    MemoryRenderingBuffer tile(4, 4);
    EXPECT_EQ(n->draw(Rect{2, 1, 6, 5}, tile, n->get_bounds()), 1);
    EXPECT_EQ(tile.get_pixel(0, 0), numbered(2, 1));
    EXPECT_EQ(tile.get_pixel(1, 0), 0u);
    EXPECT_EQ(tile.get_pixel(0, 1), 0u);
}

TEST(PicDataClippingTest, SourceRectangleAndEmptyRegionsLimitEveryMode)
{
    const HeldPicture n(gadu_test::numbered_apic(3, 2));
    const Rect middle{1, 0, 2, 2};
    for (Mode mode : {&PicDataInterface::draw, &PicDataInterface::draw_multiply, &PicDataInterface::draw_add})
    {
        MemoryRenderingBuffer buffer(3, 2);
        buffer.fill(0x00808080u);
        EXPECT_EQ(((*n.pic).*mode)(Rect{0, 0, 3, 2}, buffer, middle), 1);
        EXPECT_EQ(buffer.get_pixel(0, 0), 0x00808080u);
        EXPECT_EQ(buffer.get_pixel(2, 1), 0x00808080u);
        EXPECT_NE(buffer.get_pixel(1, 1), 0x00808080u);
        // Wholly outside, or an inverted source: nothing, and 0.
        EXPECT_EQ(((*n.pic).*mode)(Rect{3, 0, 6, 2}, buffer, n->get_bounds()), 0);
        EXPECT_EQ(((*n.pic).*mode)(Rect{0, 0, 3, 2}, buffer, Rect{2, 0, 1, 2}), 0);
        EXPECT_EQ(buffer.get_pixel(0, 0), 0x00808080u);
    }
}

TEST(PicDataClippingTest, CallerErrorsNeverReachOutsideThePictureOrTheBuffer)
{
    // A region larger than the buffer and a source larger than the picture:
    // both are illegal, and must still stay inside both (the sanitizers watch).
    const HeldPicture n(gadu_test::numbered_apic(3, 2));
    MemoryRenderingBuffer buffer(2, 1);
    EXPECT_EQ(n->draw(Rect{0, 0, 100, 100}, buffer, Rect{-50, -50, 50, 50}), 1);
    EXPECT_EQ(buffer.get_pixel(1, 0), numbered(1, 0));
    EXPECT_EQ(n->draw_at(1e300, 0.0, 2, 1, buffer, n->get_bounds()), 0);
    EXPECT_EQ(n->draw_subpixel(0.5, std::nan(""), 2, 1, buffer, n->get_bounds(), 1.0f), 0);
}

HeldPicture one_pixel(std::int32_t kind, std::uint32_t colour, std::uint8_t alpha = 0)
{
    return HeldPicture(make_apic(kind, 8, 1, 1, {colour}, kind == 1 ? Bytes{0, alpha} : Bytes{0}));
}

TEST(PicDataWholeTest, CrossfadeUsesFloorOfT255AndKeepsOpaqueFourthByte)
{
    // A: blue 50, green 100, red 200, alpha 200; B: blue 250, green 0, red 200, alpha 10.
    const HeldPicture a = one_pixel(1, 0x00C86432u, 200);
    const HeldPicture b = one_pixel(1, 0x00C800FAu, 10);
    std::uint8_t out[4] = {9, 9, 9, 9};
    for (const auto& [t, expected] : {std::pair{0.5f, std::vector<int>{149, 50, 200, 105}},  // k = 127
                                      {1.0f, {249, 0, 200, 10}},                              // k = 255: one short
                                      {0.0f, {50, 100, 200, 200}}})
    {
        ASSERT_EQ(a->crossfade_into(out, *b.pic, t), 0);
        EXPECT_EQ(std::vector<int>(out, out + 4), expected) << t;
    }
    // Opaque: the fourth byte is left alone. Another class: refused.
    const HeldPicture c = one_pixel(0, 0x00C86432u);
    const HeldPicture d = one_pixel(0, 0x00C800FAu);
    std::uint8_t opaque[4] = {9, 9, 9, 9};
    ASSERT_EQ(c->crossfade_into(opaque, *d.pic, 0.5f), 0);
    EXPECT_EQ(std::vector<int>(opaque, opaque + 4), (std::vector<int>{149, 50, 200, 9}));
    EXPECT_EQ(c->crossfade_into(opaque, *a.pic, 0.5f), -1);
}

TEST(PicDataWholeTest, AccumulateAndConvertFollowTheChannelOrder)
{
    const HeldPicture p(make_apic(1, 24, 2, 1, {}, {1, 2, 3, 4, 10, 20, 30, 40}));
    std::vector<std::uint32_t> sums = {100, 100, 100, 100, 0, 0, 0, 0};
    p->accumulate(sums.data());
    // alpha, red, green, blue
    EXPECT_EQ(sums, (std::vector<std::uint32_t>{104, 103, 102, 101, 40, 30, 20, 10}));
    std::vector<std::uint8_t> out(8, 0);
    p->convert_to_32(out.data());
    EXPECT_EQ(out, (std::vector<std::uint8_t>{1, 2, 3, 4, 10, 20, 30, 40}));
}

}  // namespace
}  // namespace gadu
