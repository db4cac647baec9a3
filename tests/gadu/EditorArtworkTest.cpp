// The editor's own pictures and font, as the plug-in embeds them: every name
// is found without regard to case and accepted by the factories with the size
// the editor's layout is built around.
#include "gadu/FontFactory.h"
#include "gadu/PicDataFactory.h"

#include <gtest/gtest.h>

#include <map>

namespace
{

struct Expected
{
    const char* name;
    std::int32_t width, height;
};

}  // namespace

TEST(EditorArtwork, EveryPictureLoadsWithItsSize)
{
    const Expected pictures[] = {{"bkg", 512, 384},      {"kn_01_spn", 73, 69}, {"KN_02_SPN", 35, 41},
                                 {"Kn_03_Spn", 40, 39},  {"kn_04_spn", 56, 53}, {"ff_01_00", 31, 25},
                                 {"ff_01_01", 31, 25},   {"arw_06", 20, 20}};
    for (const Expected& e : pictures)
    {
        const auto pic = gadu::PicDataFactory::use_instance().create(e.name);
        ASSERT_NE(pic, nullptr) << e.name;
        EXPECT_EQ(pic->get_width(), e.width) << e.name;
        EXPECT_EQ(pic->get_height(), e.height) << e.name;
    }
    // The font is not a picture.
    EXPECT_EQ(gadu::PicDataFactory::use_instance().create("font_03"), nullptr);
}

TEST(EditorArtwork, FontHas256GlyphsOfTheStatedWidths)
{
    const auto font = gadu::FontFactory::use_instance().create("font_03");
    ASSERT_NE(font, nullptr);
    EXPECT_EQ(font->get_width(), 1863);
    EXPECT_EQ(font->get_glyph_height(), 12);
    ASSERT_EQ(font->use_glyphs().size(), 256u);
    std::map<std::int32_t, int> counts;
    for (const gadu::FontInterface::Glyph& g : font->use_glyphs())
    {
        ++counts[g.width];
    }
    EXPECT_EQ(counts, (std::map<std::int32_t, int>{{5, 8}, {6, 74}, {7, 13}, {8, 161}}));
    EXPECT_EQ(font->use_glyphs()[' '].width, 5);
}
