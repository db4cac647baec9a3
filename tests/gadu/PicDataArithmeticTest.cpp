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

constexpr std::uint32_t kSource = 0x00C86432u;
constexpr std::uint32_t kBuffer = 0x7FFA1464u;
const std::vector<std::uint8_t> kAlphas = {0, 1, 128, 254, 255};

enum class Op
{
    draw,
    multiply,
    add
};

// A picture of one row: the source colour under each alpha of kAlphas.
struct OneRow
{
    OneRow(std::int32_t kind, std::int32_t bits, std::uint8_t fourth_byte = 0)
    {
        std::vector<std::uint8_t> pixels;
        for (std::uint8_t a : kAlphas)
        {
            if (bits == 8)
            {
                pixels.push_back(0);
                if (kind == 1)
                {
                    pixels.push_back(a);
                }
            }
            else
            {
                pixels.insert(pixels.end(), {0x32, 0x64, 0xC8, kind == 1 ? a : fourth_byte});
            }
        }
        const std::vector<std::uint32_t> palette = bits == 8 ? std::vector<std::uint32_t>{kSource}
                                                             : std::vector<std::uint32_t>{};
        bytes = gadu_test::make_apic(kind, bits, 5, 1, palette, pixels);
        pic = PicDataFactory::use_instance().create_from_bytes(bytes.data(), bytes.size());
    }

    std::vector<std::uint32_t> run(Op op) const
    {
        MemoryRenderingBuffer buffer(5, 1);
        buffer.fill(kBuffer);
        const Rect all{0, 0, 5, 1};
        switch (op)
        {
        case Op::draw: pic->draw(all, buffer, all); break;
        case Op::multiply: pic->draw_multiply(all, buffer, all); break;
        case Op::add: pic->draw_add(all, buffer, all); break;
        }
        std::vector<std::uint32_t> out;
        for (int x = 0; x < 5; ++x)
        {
            out.push_back(buffer.get_pixel(x, 0));
        }
        return out;
    }

    std::vector<std::uint8_t> bytes;
    std::unique_ptr<PicDataInterface> pic;
};

using Row = std::vector<std::uint32_t>;

// Alpha 0, 1, 128, 254, 255 in that order.
const Row kAlphaMultiply = {kBuffer, 0x7FF91363u, 0x7FDE0D3Bu, 0x7FC30713u, 0x7FC30713u};
const Row kAlphaAdd = {kBuffer, kBuffer, 0x7FFC467Du, 0x7FFE7795u, 0x7FFF7896u};

TEST(PicDataArithmeticTest, OpaquePicturesCopyTheWholeWordMultiplyAndSaturate)
{
    const OneRow pal(0, 8);
    const OneRow direct(0, 24, 0x33);
    EXPECT_EQ(pal.run(Op::draw), Row(5, 0x00C86432u));
    EXPECT_EQ(direct.run(Op::draw), Row(5, 0x33C86432u));
    for (const OneRow* r : {&pal, &direct})
    {
        EXPECT_EQ(r->run(Op::multiply), Row(5, 0x7FC30713u));
        EXPECT_EQ(r->run(Op::add), Row(5, 0x7FFF7896u));
    }
}

TEST(PicDataArithmeticTest, AlphaPalettePictureMovesTowardsTheColourByAlphaOver256)
{
    const OneRow r(1, 8);
    EXPECT_EQ(r.run(Op::draw), (Row{kBuffer, 0x7FF91463u, 0x7FE13C4Bu, 0x7FC86332u, 0x00C86432u}));
    EXPECT_EQ(r.run(Op::multiply), kAlphaMultiply);
    EXPECT_EQ(r.run(Op::add), kAlphaAdd);
}

TEST(PicDataArithmeticTest, AlphaDirectPictureMixesWithWeightsAAnd255MinusA)
{
    const OneRow r(1, 24);
    EXPECT_EQ(r.run(Op::draw), (Row{kBuffer, 0x7FF81463u, 0x7FE03B4Au, 0x7FC76332u, 0xFFC86432u}));
    EXPECT_EQ(r.run(Op::multiply), kAlphaMultiply);
    EXPECT_EQ(r.run(Op::add), kAlphaAdd);
}

TEST(PicDataArithmeticTest, MultiplyByWhiteLosesOneAndAddSaturates)
{
    const auto bytes = gadu_test::make_apic(0, 8, 1, 1, {0x00FFFFFFu}, {0});
    const auto white = PicDataFactory::use_instance().create_from_bytes(bytes.data(), bytes.size());
    MemoryRenderingBuffer buffer(1, 1);
    buffer.set_pixel(0, 0, 0x00FF0100u);
    white->draw_multiply(Rect{0, 0, 1, 1}, buffer, Rect{0, 0, 1, 1});
    EXPECT_EQ(buffer.get_pixel(0, 0), 0x00FE0000u);
    white->draw_add(Rect{0, 0, 1, 1}, buffer, Rect{0, 0, 1, 1});
    EXPECT_EQ(buffer.get_pixel(0, 0), 0x00FFFFFFu);
}

// A 3 x 2 opaque picture, pixel (x, y) of colour 0x10 * (1 + x + 3y).
struct Numbered
{
    Numbered()
    {
        std::vector<std::uint32_t> palette;
        std::vector<std::uint8_t> pixels;
        for (std::uint32_t n = 0; n < 6; ++n)
        {
            palette.push_back(0x10u * (n + 1));
            pixels.push_back(static_cast<std::uint8_t>(n));
        }
        bytes = gadu_test::make_apic(0, 8, 3, 2, palette, pixels);
        pic = PicDataFactory::use_instance().create_from_bytes(bytes.data(), bytes.size());
    }
    static std::uint32_t at(int x, int y) { return 0x10u * static_cast<std::uint32_t>(1 + x + 3 * y); }

    std::vector<std::uint8_t> bytes;
    std::unique_ptr<PicDataInterface> pic;
};

TEST(PicDataClippingTest, RegionPartlyOutsideThePictureDrawsOnlyTheOverlap)
{
    Numbered n;
    MemoryRenderingBuffer buffer(4, 4);
    buffer.fill(0xEEu);
    // Picture (0, 0) lands on buffer (2, 1): the region starts left of and above it.
    EXPECT_EQ(n.pic->draw(Rect{-2, -1, 2, 3}, buffer, n.pic->get_bounds()), 1);
    EXPECT_EQ(buffer.get_pixel(2, 1), Numbered::at(0, 0));
    EXPECT_EQ(buffer.get_pixel(3, 2), Numbered::at(1, 1));
    EXPECT_EQ(buffer.get_pixel(1, 1), 0xEEu);
    EXPECT_EQ(buffer.get_pixel(2, 0), 0xEEu);
    EXPECT_EQ(buffer.get_pixel(2, 3), 0xEEu);

    // Region starting inside the picture: the right column and bottom row.
    MemoryRenderingBuffer tile(4, 4);
    EXPECT_EQ(n.pic->draw(Rect{2, 1, 6, 5}, tile, n.pic->get_bounds()), 1);
    EXPECT_EQ(tile.get_pixel(0, 0), Numbered::at(2, 1));
    EXPECT_EQ(tile.get_pixel(1, 0), 0u);
    EXPECT_EQ(tile.get_pixel(0, 1), 0u);
}

TEST(PicDataClippingTest, SourceRectangleAndEmptyRegionsLimitEveryMode)
{
    Numbered n;
    const Rect middle{1, 0, 2, 2};
    for (int mode = 0; mode < 3; ++mode)
    {
        MemoryRenderingBuffer buffer(3, 2);
        buffer.fill(0x00808080u);
        const Rect region{0, 0, 3, 2};
        const std::int32_t drew = mode == 0   ? n.pic->draw(region, buffer, middle)
                                : mode == 1 ? n.pic->draw_multiply(region, buffer, middle)
                                            : n.pic->draw_add(region, buffer, middle);
        EXPECT_EQ(drew, 1);
        EXPECT_EQ(buffer.get_pixel(0, 0), 0x00808080u);
        EXPECT_EQ(buffer.get_pixel(2, 1), 0x00808080u);
        EXPECT_NE(buffer.get_pixel(1, 1), 0x00808080u);

        // Wholly outside, or an inverted source: nothing, and 0.
        MemoryRenderingBuffer untouched(3, 2);
        EXPECT_EQ(n.pic->draw(Rect{3, 0, 6, 2}, untouched, n.pic->get_bounds()), 0);
        EXPECT_EQ(n.pic->draw_add(region, untouched, Rect{2, 0, 1, 2}), 0);
        EXPECT_EQ(untouched.get_pixel(0, 0), 0u);
    }
}

TEST(PicDataClippingTest, CallerErrorsNeverReachOutsideThePictureOrTheBuffer)
{
    // A region larger than the buffer and a source larger than the picture:
    // both are illegal, and must still stay inside both (the sanitizers watch).
    Numbered n;
    MemoryRenderingBuffer buffer(2, 1);
    EXPECT_EQ(n.pic->draw(Rect{0, 0, 100, 100}, buffer, Rect{-50, -50, 50, 50}), 1);
    EXPECT_EQ(buffer.get_pixel(1, 0), Numbered::at(1, 0));
    EXPECT_EQ(n.pic->draw_at(1e300, 0.0, 2, 1, buffer, n.pic->get_bounds()), 0);
    EXPECT_EQ(n.pic->draw_subpixel(0.5, std::nan(""), 2, 1, buffer, n.pic->get_bounds(), 1.0f), 0);
}

std::unique_ptr<PicDataInterface> one_pixel(std::int32_t kind, std::uint32_t colour, std::vector<std::uint8_t>& bytes,
                                           std::uint8_t alpha = 0)
{
    bytes = gadu_test::make_apic(kind, 8, 1, 1, {colour}, kind == 1 ? std::vector<std::uint8_t>{0, alpha}
                                                                     : std::vector<std::uint8_t>{0});
    return PicDataFactory::use_instance().create_from_bytes(bytes.data(), bytes.size());
}

TEST(PicDataWholeTest, CrossfadeUsesFloorOfT255AndKeepsOpaqueFourthByte)
{
    // A: blue 50, green 100, red 200, alpha 200; B: blue 250, green 0, red 200, alpha 10.
    std::vector<std::uint8_t> a_bytes, b_bytes, c_bytes, d_bytes;
    const auto a = one_pixel(1, 0x00C86432u, a_bytes, 200);
    const auto b = one_pixel(1, 0x00C800FAu, b_bytes, 10);
    std::uint8_t out[4] = {9, 9, 9, 9};
    for (const auto& [t, expected] : {std::pair{0.5f, std::vector<int>{149, 50, 200, 105}},  // k = 127
                                      {1.0f, {249, 0, 200, 10}},                              // k = 255: one short
                                      {0.0f, {50, 100, 200, 200}}})
    {
        ASSERT_EQ(a->crossfade_into(out, *b, t), 0);
        EXPECT_EQ(std::vector<int>(out, out + 4), expected) << t;
    }
    // Opaque: the fourth byte is left alone. Another class: refused.
    const auto c = one_pixel(0, 0x00C86432u, c_bytes);
    const auto d = one_pixel(0, 0x00C800FAu, d_bytes);
    std::uint8_t opaque[4] = {9, 9, 9, 9};
    ASSERT_EQ(c->crossfade_into(opaque, *d, 0.5f), 0);
    EXPECT_EQ(std::vector<int>(opaque, opaque + 4), (std::vector<int>{149, 50, 200, 9}));
    EXPECT_EQ(c->crossfade_into(opaque, *a, 0.5f), -1);
}

TEST(PicDataWholeTest, AccumulateAndConvertFollowTheChannelOrder)
{
    const auto bytes = gadu_test::make_apic(1, 24, 2, 1, {}, {1, 2, 3, 4, 10, 20, 30, 40});
    const auto pic = PicDataFactory::use_instance().create_from_bytes(bytes.data(), bytes.size());
    std::vector<std::uint32_t> sums = {100, 100, 100, 100, 0, 0, 0, 0};
    pic->accumulate(sums.data());
    // alpha, red, green, blue
    EXPECT_EQ(sums, (std::vector<std::uint32_t>{104, 103, 102, 101, 40, 30, 20, 10}));
    std::vector<std::uint8_t> out(8, 0);
    pic->convert_to_32(out.data());
    EXPECT_EQ(out, (std::vector<std::uint8_t>{1, 2, 3, 4, 10, 20, 30, 40}));
}

}  // namespace
}  // namespace gadu
