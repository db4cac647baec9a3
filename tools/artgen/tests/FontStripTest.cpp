#include "ApicReader.h"
#include "ArtworkSet.h"
#include "PcfFont.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <stdexcept>
#include <string>

namespace
{

struct GlyphRun
{
    int x, width;
};

// The glyph table as the toolkit finds it: a new glyph wherever the bottom
// row's byte differs from the byte at the current glyph's start.
std::vector<GlyphRun> glyph_table(const ApicView& v)
{
    std::vector<GlyphRun> runs{{0, 0}};
    const int row = v.height - 1;
    for (int x = 0; x < v.width; ++x)
    {
        if (v.index(x, row) != v.index(runs.back().x, row))
        {
            runs.push_back({x, 0});
        }
        ++runs.back().width;
    }
    return runs;
}

class FontStripTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { set_ = new artgen::ArtworkSet(ZQ_FONT_DIR); }
    static void TearDownTestSuite() { delete set_; }

    ApicView strip() const { return ApicView(set_->get("FONT_03").bytes); }

    // The glyph's ink rows as text, to compare glyphs with each other.
    std::string ink(const ApicView& v, const GlyphRun& g) const
    {
        std::string out;
        for (int y = 0; y < v.height - 1; ++y)
        {
            for (int x = g.x; x < g.x + g.width; ++x)
            {
                out += v.index(x, y) != 0 ? '#' : '.';
            }
            out += '\n';
        }
        return out;
    }

    static artgen::ArtworkSet* set_;
};

artgen::ArtworkSet* FontStripTest::set_ = nullptr;

}  // namespace

TEST_F(FontStripTest, GlyphTableHas256GlyphsOfTheStatedWidths)
{
    const ApicView v = strip();
    const std::vector<GlyphRun> table = glyph_table(v);
    ASSERT_EQ(table.size(), 256u);
    std::map<int, int> counts;
    int sum = 0;
    for (const GlyphRun& g : table)
    {
        ++counts[g.width];
        sum += g.width;
    }
    EXPECT_EQ(sum, 1863);
    EXPECT_EQ(counts, (std::map<int, int>{{5, 8}, {6, 74}, {7, 13}, {8, 161}}));
    EXPECT_EQ(table[' '].width, 5);
    // The marks alternate between exactly 0 and 255.
    for (int x = 0; x < v.width; ++x)
    {
        const std::uint8_t b = v.index(x, v.height - 1);
        ASSERT_TRUE(b == 0 || b == 255) << x;
    }
}

TEST_F(FontStripTest, EveryGlyphButTheSpacesHasInkInsideItsCell)
{
    const ApicView v = strip();
    const std::vector<GlyphRun> table = glyph_table(v);
    for (int code = 0; code < 256; ++code)
    {
        const std::string s = ink(v, table[static_cast<std::size_t>(code)]);
        const bool blank = s.find('#') == std::string::npos;
        EXPECT_EQ(blank, code == ' ' || code == 0xA0) << "code " << code << '\n' << s;
    }
}

TEST_F(FontStripTest, PrintableCharactersAllLookDifferent)
{
    // A wrong code mapping or a missing glyph shows up as two characters
    // drawn alike (the empty-box picture, or a shifted table).
    const ApicView v = strip();
    const std::vector<GlyphRun> table = glyph_table(v);
    std::map<std::string, int> seen;
    for (int code = 33; code < 256; ++code)
    {
        if (code >= 127 && code <= 0xA0)
        {
            continue;
        }
        // Compare the ink without the cell's margins, which differ by width only.
        std::string s = ink(v, table[static_cast<std::size_t>(code)]);
        const auto [it, fresh] = seen.emplace(s, code);
        EXPECT_TRUE(fresh) << "codes " << it->second << " and " << code << " look alike";
    }
    // And a control code's box is not what a letter looks like.
    EXPECT_NE(ink(v, table[1]), ink(v, table['O']));
}

TEST_F(FontStripTest, LettersSitOnACommonBaseline)
{
    // 'x' and 'X' end on the same row; 'p' and 'g' reach below it.
    const ApicView v = strip();
    const std::vector<GlyphRun> table = glyph_table(v);
    const auto last_row = [&](int code) {
        const GlyphRun& g = table[static_cast<std::size_t>(code)];
        int last = -1;
        for (int y = 0; y < v.height - 1; ++y)
        {
            for (int x = g.x; x < g.x + g.width; ++x)
            {
                last = v.index(x, y) != 0 ? y : last;
            }
        }
        return last;
    };
    EXPECT_EQ(last_row('x'), last_row('X'));
    EXPECT_EQ(last_row('e'), last_row(0xC9));  // e and E acute
    EXPECT_GT(last_row('p'), last_row('x'));
    EXPECT_GT(last_row('g'), last_row('x'));
}

TEST(PcfFont, RefusesWhatIsNotAFont)
{
    EXPECT_THROW(artgen::PcfFont("/nonexistent/font.pcf.gz"), std::runtime_error);
    EXPECT_THROW(artgen::PcfFont(ZQ_SOURCE_DIR "/README.md"), std::runtime_error);
}
