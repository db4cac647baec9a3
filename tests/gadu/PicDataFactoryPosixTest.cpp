// Lookup by name through the resource table that stands in for the resource
// section outside Windows.
#include "gadu/FontFactory.h"
#include "gadu/PicDataFactory.h"
#include "sys/ResourceTable.h"

#include "ApicImage.h"

#include <gtest/gtest.h>

#include <vector>

namespace gadu
{
namespace
{

TEST(PicDataFactoryPosixTest, FindsPicturesAndFontsByName)
{
    static const std::vector<std::uint8_t> pic = gadu_test::make_apic(0, 8, 1, 1, {0u}, {0});
    static const std::vector<std::uint8_t> font = gadu_test::make_apic(2, 0, 2, 2, {}, {0, 0, 0, 255});
    const sys::ResourceTable::Entry entries[] = {{"APIC", "KN_TEST_SPN", pic.data(), pic.size()},
                                                 {"APIC", "FONT_TEST", font.data(), font.size()},
                                                 {"WAVE", "NOT_A_PIC", pic.data(), pic.size()}};
    const sys::ResourceTable table(entries, 3);
    EXPECT_NE(PicDataFactory::use_instance().create("KN_TEST_SPN"), nullptr);
    EXPECT_EQ(PicDataFactory::use_instance().create("NOT_A_PIC"), nullptr);
    EXPECT_EQ(PicDataFactory::use_instance().create("missing"), nullptr);
    EXPECT_EQ(PicDataFactory::use_instance().create(nullptr), nullptr);
    // A unicolour font is no picture, and an opaque picture no font.
    EXPECT_EQ(PicDataFactory::use_instance().create("FONT_TEST"), nullptr);
    const auto loaded = FontFactory::use_instance().create("FONT_TEST");
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(loaded->use_glyphs().size(), 2u);
    EXPECT_EQ(FontFactory::use_instance().create("KN_TEST_SPN"), nullptr);
}

}  // namespace
}  // namespace gadu
