// Pictures: what the factory accepts from a resource's bytes, the per-pixel
// arithmetic of each kind, clipping, and the Picture that places one.
#include "gadu/MemoryRenderingBuffer.h"
#include "gadu/PicDataFactory.h"
#include "gadu/Picture.h"

#include "ApicImage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <vector>

namespace gadu
{
namespace
{

using gadu_test::HeldPicture;
using gadu_test::make_apic;
using gadu_test::numbered;
using gadu_test::numbered_apic;
using gadu_test::put_u32;
using Bytes = std::vector<std::uint8_t>;
using Row = std::vector<std::uint32_t>;
using Mode = std::int32_t (PicDataInterface::*)(const Rect&, RenderingBufferInterface&, const Rect&) const;

std::unique_ptr<PicDataInterface> make(const Bytes& bytes)
{
    return PicDataFactory::use_instance().create_from_bytes(bytes.data(), bytes.size());
}

// A valid 2 x 2 alpha palette picture, changed by one edit.
Bytes edited(const std::function<void(Bytes&)>& edit)
{
    Bytes bytes = make_apic(1, 8, 2, 2, {0x00FFFFFFu, 0u}, {0, 255, 1, 0, 1, 128, 0, 10});
    edit(bytes);
    return bytes;
}

// Which class each kind gets shows in how it draws (the arithmetic tests);
// here only that a picture reads the resource's bytes in place.
TEST(PicDataFactoryTest, APictureReadsTheResourceInPlace)
{
    const Bytes alpha_pal = make_apic(1, 8, 1, 1, {0u}, {0, 9});
    const auto pic = make(alpha_pal);
    EXPECT_EQ(pic->use_pixels(), alpha_pal.data() + 40);
    EXPECT_EQ(pic->use_palette(), alpha_pal.data() + 36);
}

TEST(PicDataFactoryTest, HeaderRulesRefuseWhatTheyMust)
{
    EXPECT_NE(make(edited([](Bytes&) {})), nullptr);
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 0, 0); })), nullptr);             // marker
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 4, 35); })), nullptr);            // header size
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 4, 0x80000000u); })), nullptr);   // negative header size
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 12, 16); })), nullptr);           // bits
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 12, 0); })), nullptr);            // a font's depth
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 8, 2); })), nullptr);             // a font's kind
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 8, 0xFFFFFFFFu); })), nullptr);   // kind -1
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 24, 0xFFFFFFFFu); })), nullptr);  // palette -1
    EXPECT_EQ(make(Bytes(35, 0xFF)), nullptr);
    EXPECT_EQ(PicDataFactory::use_instance().create_from_bytes(nullptr, 100), nullptr);
}

TEST(PicDataFactoryTest, PaletteOf256IsTheMost)
{
    std::vector<std::uint32_t> palette(256, 0u);
    EXPECT_NE(make(make_apic(0, 8, 1, 1, palette, {255})), nullptr);
    palette.push_back(0u);
    EXPECT_EQ(make(make_apic(0, 8, 1, 1, palette, {255})), nullptr);
}

TEST(PicDataFactoryTest, SizesThatCannotBeAddressedAreRefused)
{
    auto sized = [](std::uint32_t w, std::uint32_t h) {
        return edited([w, h](Bytes& b) {
            put_u32(b, 16, w);
            put_u32(b, 20, h);
        });
    };
    EXPECT_EQ(make(sized(0xFFFFFFFEu, 0xFFFFFFFEu)), nullptr);  // both negative
    EXPECT_EQ(make(sized(0xFFFFFFFEu, 2)), nullptr);            // one negative
    EXPECT_EQ(make(sized(0, 0xFFFFFFFFu)), nullptr);            // zero by negative
    EXPECT_EQ(make(sized(0x7FFFFFFFu, 0x7FFFFFFFu)), nullptr);  // overflowing
    EXPECT_EQ(make(sized(0x10000u, 0x10000u)), nullptr);        // 2^32 pixels
    EXPECT_EQ(make(sized(3, 2)), nullptr);                      // one row too many for the bytes
    const auto empty = make(sized(0, 5));
    ASSERT_NE(empty, nullptr);  // nothing to draw, but nothing wrong either
    EXPECT_EQ(empty->get_width(), 0);
}

TEST(PicDataFactoryTest, EverythingMustLieInsideTheBytes)
{
    const Bytes good = edited([](Bytes&) {});
    // Cut anywhere inside the pixels: refused.
    for (std::size_t cut = 0; cut < good.size(); ++cut)
    {
        EXPECT_EQ(PicDataFactory::use_instance().create_from_bytes(good.data(), cut), nullptr) << cut;
    }
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 28, 0xFFFFFFF0u); })), nullptr);  // pixel offset
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 32, 48); })), nullptr);          // palette past the end
    EXPECT_EQ(make(edited([](Bytes& b) { put_u32(b, 4, 1000); })), nullptr);         // header past the end
    // Kinds without a palette ignore its offset.
    Bytes direct = make_apic(1, 24, 1, 1, {}, {1, 2, 3, 4});
    put_u32(direct, 32, 0xFFFFFFFFu);
    EXPECT_NE(make(direct), nullptr);
    // A pixel naming palette entry 2 of 2.
    EXPECT_EQ(make(edited([](Bytes& b) { b[40 + 4] = 2; })), nullptr);
}

// Golden bytes of the per-pixel arithmetic, computed by hand from the blend
// formulas. The source colour is blue 50, green 100, red 200; the buffer holds
// blue 100, green 20, red 250 and 0x7F in its unused byte, so every channel
// moves in its own direction and a stray write to the fourth byte shows.
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

TEST(PicDataClippingTest, RegionPartlyOutsideThePictureDrawsOnlyTheOverlap)
{
    const HeldPicture n(numbered_apic(3, 2));
    MemoryRenderingBuffer buffer(4, 4);
    buffer.fill(0xEEu);
    // Picture (0, 0) lands on buffer (2, 1): the region starts left of and above it.
    EXPECT_EQ(n->draw(Rect{-2, -1, 2, 3}, buffer, n->get_bounds()), 1);
    EXPECT_EQ(buffer.get_pixel(2, 1), numbered(0, 0, 3));
    EXPECT_EQ(buffer.get_pixel(3, 2), numbered(1, 1, 3));
    EXPECT_EQ(buffer.get_pixel(1, 1), 0xEEu);
    EXPECT_EQ(buffer.get_pixel(2, 0), 0xEEu);
    EXPECT_EQ(buffer.get_pixel(2, 3), 0xEEu);

    // Region starting inside the picture: the right column and bottom row.
    MemoryRenderingBuffer tile(4, 4);
    EXPECT_EQ(n->draw(Rect{2, 1, 6, 5}, tile, n->get_bounds()), 1);
    EXPECT_EQ(tile.get_pixel(0, 0), numbered(2, 1, 3));
    EXPECT_EQ(tile.get_pixel(1, 0), 0u);
    EXPECT_EQ(tile.get_pixel(0, 1), 0u);
}

TEST(PicDataClippingTest, SourceRectangleAndEmptyRegionsLimitEveryMode)
{
    const HeldPicture n(numbered_apic(3, 2));
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
    const HeldPicture n(numbered_apic(3, 2));
    MemoryRenderingBuffer buffer(2, 1);
    EXPECT_EQ(n->draw(Rect{0, 0, 100, 100}, buffer, Rect{-50, -50, 50, 50}), 1);
    EXPECT_EQ(buffer.get_pixel(1, 0), numbered(1, 0, 3));
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
    // Every pixel of a picture of more than one row, the last one too.
    const HeldPicture six(numbered_apic(3, 2));
    std::vector<std::uint8_t> all(24, 0);
    six->convert_to_32(all.data());
    EXPECT_EQ(all[20], 0x60);
}

TEST(BoundingBoxDefaultCheckerTest, HitsNothingUntilGivenARectangleThenHalfOpenEdges)
{
    BoundingBoxDefaultChecker checker;
    EXPECT_FALSE(checker.check_point(0, 0));
    EXPECT_FALSE(checker.check_point(INT32_MIN, INT32_MIN));
    checker.set_hit_rect(Rect{-2, -1, 3, 4});
    EXPECT_TRUE(checker.check_point(-2, -1));
    EXPECT_TRUE(checker.check_point(2, 3));
    EXPECT_FALSE(checker.check_point(3, 0));
    EXPECT_FALSE(checker.check_point(0, 4));
    checker.set_custom_checker([](std::int32_t x, std::int32_t y) { return x == 10 && y == 10; });
    EXPECT_FALSE(checker.check_point(0, 0));
    EXPECT_TRUE(checker.check_point(10, 10));
    checker.set_custom_checker(nullptr);
    EXPECT_TRUE(checker.check_point(0, 0));
}

TEST(RectTest, MovingAnUnsetRectangleNeitherWrapsNorBecomesNonEmpty)
{
    const Rect unset{INT32_MIN, INT32_MIN, INT32_MIN, INT32_MIN};
    EXPECT_TRUE(unset.moved(-5, -5).is_empty());
    EXPECT_EQ(unset.moved(-5, 7).x1, INT32_MIN);
    EXPECT_EQ((Rect{1, 2, 3, 4}.moved(10, 20)), (Rect{11, 22, 13, 24}));
    EXPECT_EQ(Rect::of_size(INT32_MAX - 1, 0, 10, 1).x2, INT32_MAX);
}

TEST(MemoryRenderingBufferTest, BlitCopiesTheTopLeftPartClippedToTheScreen)
{
    MemoryRenderingBuffer screen(6, 5);
    MemoryRenderingBuffer tile(3, 3, &screen);
    for (int y = 0; y < 3; ++y)
    {
        for (int x = 0; x < 3; ++x)
        {
            tile.set_pixel(x, y, 0x01000000u + static_cast<std::uint32_t>(10 * y + x));
        }
    }
    tile.blit(4, 3, 3, 3);  // Only 2 x 2 of it lands on the screen.
    EXPECT_EQ(screen.get_pixel(4, 3), 0x01000000u);
    EXPECT_EQ(screen.get_pixel(5, 4), 0x01000000u + 11u);
    EXPECT_EQ(screen.get_pixel(3, 3), 0u);
    tile.blit(-1, 0, 2, 1);  // Only the tile's pixel (1, 0) lands.
    EXPECT_EQ(screen.get_pixel(0, 0), 0x01000000u + 1u);
    EXPECT_EQ(screen.get_pixel(1, 0), 0u);
}

TEST(PictureTest, HotSpotMovesTheHitRectangleAndTheDrawnPicture)
{
    const HeldPicture np(numbered_apic(4, 3));
    Picture picture(np.pic.get());
    EXPECT_EQ(picture.get_hit_rect(), (Rect{0, 0, 4, 3}));
    picture.set_hot_spot(2, 1);
    EXPECT_EQ(picture.get_hit_rect(), (Rect{-2, -1, 2, 2}));

    // The region is relative to the hot spot: (-2, -1) is the picture's corner.
    MemoryRenderingBuffer buffer(8, 8);
    EXPECT_EQ(picture.draw(Rect{-3, -2, 5, 6}, buffer), 1);
    EXPECT_EQ(buffer.get_pixel(1, 1), numbered(0, 0, 4));
    EXPECT_EQ(buffer.get_pixel(4, 3), numbered(3, 2, 4));
    EXPECT_EQ(buffer.get_pixel(0, 0), 0u);
    EXPECT_EQ(buffer.get_pixel(5, 1), 0u);
}

TEST(PictureTest, SourceRectangleLimitsDrawingAndHitting)
{
    const HeldPicture np(numbered_apic(4, 3));
    Picture picture(np.pic.get());
    picture.set_source_rect(Rect{1, 1, 10, 10});
    EXPECT_EQ(picture.get_source_rect(), (Rect{1, 1, 4, 3}));
    EXPECT_TRUE(!picture.hit_test(0, 0) && picture.hit_test(1, 1) && picture.hit_test(3, 2) && !picture.hit_test(4, 2));

    MemoryRenderingBuffer buffer(4, 3);
    picture.draw(Rect{0, 0, 4, 3}, buffer);
    EXPECT_EQ(buffer.get_pixel(0, 0), 0u);
    EXPECT_EQ(buffer.get_pixel(1, 1), numbered(1, 1, 4));

    picture.set_source_rect(Rect{3, 2, 1, 1});
    EXPECT_EQ(picture.get_source_rect(), Rect{});
    EXPECT_FALSE(picture.hit_test(3, 2));
    MemoryRenderingBuffer untouched(4, 3);
    EXPECT_EQ(picture.draw(Rect{0, 0, 4, 3}, untouched), 0);
}

TEST(PictureTest, WithoutAPictureNothingIsDrawnOrHit)
{
    Picture picture;
    MemoryRenderingBuffer buffer(2, 2);
    EXPECT_EQ(picture.draw(Rect{0, 0, 2, 2}, buffer), 0);
    EXPECT_EQ(picture.draw_rotated(0.0, 0.0, 2, 2, 1.0, buffer), 0);
    EXPECT_EQ(picture.draw_at(0.5, 0.0, 2, 2, buffer), 0);
    EXPECT_FALSE(picture.hit_test(0, 0));
}

}  // namespace
}  // namespace gadu
