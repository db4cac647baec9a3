#include "gadu/FontFactory.h"
#include "gadu/MemoryRenderingBuffer.h"
#include "gadu/MulticolorFont.h"
#include "gadu/UnicolorFont.h"

#include "ApicImage.h"

#include <gtest/gtest.h>

#include <vector>

namespace gadu
{
namespace
{

using Bytes = std::vector<std::uint8_t>;

std::unique_ptr<FontInterface> make(const Bytes& bytes)
{
    return FontFactory::use_instance().create_from_bytes(bytes.data(), bytes.size());
}

// A unicolour strip of 7 x 3: glyph rows of coverage 1, 128, 255, 0, ... and a
// bottom row marking glyphs of widths 2, 3, 1, 1.
Bytes unicolour_strip()
{
    return gadu_test::make_apic(2, 0, 7, 3, {},
                                {1, 128, 255, 0, 255, 255, 255,  //
                                 255, 0, 0, 0, 0, 0, 0,          //
                                 0, 0, 255, 255, 255, 0, 255});
}

std::vector<std::pair<std::int32_t, std::int32_t>> table_of(const FontInterface& font)
{
    std::vector<std::pair<std::int32_t, std::int32_t>> out;
    for (const auto& g : font.use_glyphs())
    {
        out.emplace_back(g.width, g.x_start);
    }
    return out;
}

TEST(FontTest, GlyphTableComesFromTheBottomRow)
{
    const Bytes bytes = unicolour_strip();
    const auto font = make(bytes);
    ASSERT_NE(dynamic_cast<UnicolorFont*>(font.get()), nullptr);
    EXPECT_EQ(font->get_glyph_height(), 2);
    EXPECT_EQ(table_of(*font), (std::vector<std::pair<std::int32_t, std::int32_t>>{{2, 0}, {3, 2}, {1, 5}, {1, 6}}));

    // One value throughout: one glyph as wide as the strip.
    const Bytes flat = gadu_test::make_apic(2, 0, 4, 2, {}, {9, 9, 9, 9, 7, 7, 7, 7});
    EXPECT_EQ(table_of(*make(flat)), (std::vector<std::pair<std::int32_t, std::int32_t>>{{4, 0}}));

    // A multicolour strip marks glyphs by the palette index, not the transparency.
    const Bytes multi = gadu_test::make_apic(1, 8, 3, 1, {0u, 0u}, {0, 5, 0, 9, 1, 9});
    EXPECT_EQ(table_of(*make(multi)), (std::vector<std::pair<std::int32_t, std::int32_t>>{{2, 0}, {1, 2}}));
}

TEST(FontTest, UnicolorCoverageBlendsTheGivenColour)
{
    const Bytes bytes = unicolour_strip();
    const auto font = make(bytes);
    MemoryRenderingBuffer buffer(6, 3);
    buffer.fill(0x7FFA1464u);
    // The first row of glyphs 0 and 1 at (1, 1): coverage 1, 128, 255 (d +
    // (c - d) x 255 / 256), 0, 255; of glyph 1 alone at (0, 2): 255, 0, 255.
    font->draw_glyph_area(Rect{0, 0, 5, 1}, 1, 1, buffer, 0x00C86432u);
    font->draw_glyph_area(Rect{2, 0, 5, 1}, 0, 2, buffer, 0x00C86432u);
    const std::uint32_t d = 0x7FFA1464u;
    const std::uint32_t c = 0x7FC86332u;
    EXPECT_EQ(gadu_test::pixels_of(buffer), (std::vector<std::uint32_t>{d, d, d, d, d, d,  //
                                                                        d, 0x7FF91463u, 0x7FE13C4Bu, c, d, c,  //
                                                                        c, d, c, d, d, d}));
}

TEST(FontTest, MulticolorTransparencyZeroDrawsThePaletteColour)
{
    const Bytes bytes = gadu_test::make_apic(1, 8, 4, 2, {0x00C86432u, 0x00102030u},
                                             {0, 0, 0, 127, 0, 255, 1, 0, 1, 0, 0, 0, 1, 0, 0, 0});
    const auto font = make(bytes);
    ASSERT_NE(dynamic_cast<MulticolorFont*>(font.get()), nullptr);
    MemoryRenderingBuffer buffer(4, 1);
    buffer.fill(0x7FFA1464u);
    font->draw_glyph_area(Rect{0, 0, 4, 1}, 0, 0, buffer, 0x00FFFFFFu);
    EXPECT_EQ(gadu_test::pixels_of(buffer),
              (std::vector<std::uint32_t>{0x7FC86332u, 0x7FE13C4Bu, 0x7FFA1464u, 0x7F101F30u}));
}

TEST(FontTest, CallerErrorsStayInsideTheStripAndTheBuffer)
{
    const Bytes bytes = unicolour_strip();
    const auto font = make(bytes);
    MemoryRenderingBuffer buffer(2, 3);
    // Starting left of the buffer and running into the boundary row: only the
    // glyph rows that fit are drawn.
    font->draw_glyph_area(Rect{0, 0, 7, 3}, -1, 0, buffer, 0x00FFFFFFu);
    EXPECT_EQ(buffer.get_pixel(0, 0), 0x007F7F7Fu);
    EXPECT_EQ(buffer.get_pixel(1, 0), 0x00FEFEFEu);
    EXPECT_EQ(buffer.get_pixel(1, 2), 0u);
    // Wholly outside the buffer, or a rectangle around the whole strip placed
    // so that none of it lands: nothing.
    font->draw_glyph_area(Rect{2, 0, 3, 1}, -2, -2, buffer, 0x00FFFFFFu);
    font->draw_glyph_area(Rect{-9, -9, 90, 90}, 0, 0, buffer, 0x00FFFFFFu);
    EXPECT_EQ(buffer.get_pixel(0, 0), 0x007F7F7Fu);
    EXPECT_EQ(buffer.get_pixel(0, 1), 0u);
}

TEST(FontFactoryTest, OnlyTheTwoFontKindsAreAccepted)
{
    EXPECT_NE(make(gadu_test::make_apic(2, 0, 1, 2, {}, {0, 0})), nullptr);
    EXPECT_EQ(make(gadu_test::make_apic(2, 8, 1, 2, {0u}, {0, 0})), nullptr);
    EXPECT_EQ(make(gadu_test::make_apic(1, 0, 1, 2, {}, {0, 0, 0, 0})), nullptr);
    EXPECT_EQ(make(gadu_test::make_apic(0, 8, 1, 2, {0u}, {0, 0})), nullptr);
    EXPECT_EQ(make(gadu_test::make_apic(1, 24, 1, 1, {}, {0, 0, 0, 0})), nullptr);
    // A multicolour pixel naming a missing palette entry, and a cut strip.
    EXPECT_EQ(make(gadu_test::make_apic(1, 8, 1, 1, {0u}, {1, 0})), nullptr);
    const Bytes cut = gadu_test::make_apic(2, 0, 4, 4, {}, Bytes(15, 0));
    EXPECT_EQ(make(cut), nullptr);
    EXPECT_EQ(FontFactory::use_instance().create("no such font"), nullptr);
}

}  // namespace
}  // namespace gadu
