#include "ApicReader.h"
#include "ArtworkSet.h"

#include "sys/Resource.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

const artgen::ArtworkSet& artwork()
{
    static const artgen::ArtworkSet set(ZQ_FONT_DIR);
    return set;
}

struct Expected
{
    const char* name;
    std::int32_t kind, bits, width, height, palette_entries;
};

// The editor's resources: every picture a two-colour palette picture, the
// drag pointer white only, the font a unicolour strip.
const Expected expected[] = {
    {"BKG", 0, 8, 512, 384, 2},      {"KN_01_SPN", 1, 8, 73, 69, 2}, {"KN_02_SPN", 1, 8, 35, 41, 2},
    {"KN_03_SPN", 1, 8, 40, 39, 2},  {"KN_04_SPN", 1, 8, 56, 53, 2}, {"FF_01_00", 1, 8, 31, 25, 2},
    {"FF_01_01", 1, 8, 31, 25, 2},   {"ARW_06", 1, 8, 20, 20, 1},    {"FONT_03", 2, 0, 1863, 13, 0},
};

std::uint32_t palette_entry(const ApicView& v, int i)
{
    const std::size_t at = static_cast<std::size_t>(v.palette_at) + 4 * i;
    return v.bytes->at(at) | v.bytes->at(at + 1) << 8 | v.bytes->at(at + 2) << 16 | static_cast<std::uint32_t>(v.bytes->at(at + 3)) << 24;
}

}  // namespace

TEST(ArtworkFormat, HeadersSizesAndPalettesAreExact)
{
    ASSERT_EQ(artwork().get_resources().size(), std::size(expected));
    for (const Expected& e : expected)
    {
        SCOPED_TRACE(e.name);
        const std::vector<std::uint8_t>& bytes = artwork().get(e.name).bytes;
        const ApicView v(bytes);
        EXPECT_EQ(static_cast<std::uint32_t>(v.marker), 0xFFFFFFFFu);
        EXPECT_EQ(v.header_size, 36);
        EXPECT_EQ(v.kind, e.kind);
        EXPECT_EQ(v.bits, e.bits);
        EXPECT_EQ(v.width, e.width);
        EXPECT_EQ(v.height, e.height);
        // The pixel rows fill the resource exactly, after header and palette.
        const std::size_t pixel_bytes = static_cast<std::size_t>(e.width) * e.height * v.bytes_per_pixel();
        EXPECT_EQ(static_cast<std::size_t>(v.pixels_at) + pixel_bytes, bytes.size());
        if (e.bits == 8)
        {
            EXPECT_EQ(v.palette_entries, e.palette_entries);
            EXPECT_GE(v.palette_at, 36);
            EXPECT_LE(v.palette_at + 4 * v.palette_entries, v.pixels_at);
            EXPECT_EQ(palette_entry(v, 0), 0x00FFFFFFu);  // white
            if (e.palette_entries == 2)
            {
                EXPECT_EQ(palette_entry(v, 1), 0x00000000u);  // black
            }
            for (int y = 0; y < e.height; ++y)
            {
                for (int x = 0; x < e.width; ++x)
                {
                    ASSERT_LT(v.index(x, y), e.palette_entries) << x << ", " << y;
                }
            }
        }
    }
}

TEST(ArtworkFormat, EveryBuildDrawsTheSameBytes)
{
    const artgen::ArtworkSet again(ZQ_FONT_DIR);
    for (const Expected& e : expected)
    {
        EXPECT_EQ(again.get(e.name).bytes, artwork().get(e.name).bytes) << e.name;
    }
}

TEST(ArtworkFormat, EmbeddedResourcesAreTheGeneratedOnes)
{
    for (const Expected& e : expected)
    {
        std::size_t size = 0;
        const std::uint8_t* data = sys::get_resource("APIC", e.name, &size);
        ASSERT_NE(data, nullptr) << e.name;
        EXPECT_EQ(std::vector<std::uint8_t>(data, data + size), artwork().get(e.name).bytes) << e.name;
    }
}
