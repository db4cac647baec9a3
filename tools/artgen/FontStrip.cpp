#include "FontStrip.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace artgen
{

namespace
{

bool is_control(int code)
{
    return code < 32 || (code >= 127 && code < 160);
}

// How wide a glyph would like its cell, after its ink: punctuation gives way
// first, capitals last.
int width_class(int code)
{
    if ((code >= 'A' && code <= 'Z') || (code >= 0xC0 && code <= 0xDE))
    {
        return 4;
    }
    if (code >= 'a' && code <= 'z')
    {
        return 2;
    }
    if (code >= '0' && code <= '9')
    {
        return 1;
    }
    if (code >= 0xDF)
    {
        return 2;  // accented small letters
    }
    return code < 128 ? 0 : 3;
}

}  // namespace

FontStrip::FontStrip(const PcfFont& font) : _widths(nbr_glyphs), _starts(nbr_glyphs)
{
    assign_widths(font);
    _width = std::accumulate(_widths.begin(), _widths.end(), 0);
    _coverage.assign(static_cast<std::size_t>(_width * strip_height), 0);
    for (int code = 0, x = 0; code < nbr_glyphs; ++code)
    {
        _starts[static_cast<std::size_t>(code)] = x;
        const std::uint8_t mark = code % 2 == 0 ? 0 : 255;
        for (int i = 0; i < get_glyph_width(code); ++i)
        {
            _coverage[static_cast<std::size_t>(glyph_height * _width + x + i)] = mark;
        }
        x += get_glyph_width(code);
        if (font.get_glyph(static_cast<std::uint32_t>(code)).present && !is_control(code))
        {
            draw_glyph(font, code);
        }
        else
        {
            draw_missing(code);
        }
    }
}

void FontStrip::assign_widths(const PcfFont& font)
{
    // Every control code shows the same boxed picture in a wide cell; the
    // space is 5 wide; the others are ranked by ink width.
    std::vector<std::tuple<int, int, int>> ranked;  // ink width, class, code
    for (int code = 0; code < nbr_glyphs; ++code)
    {
        if (is_control(code))
        {
            _widths[static_cast<std::size_t>(code)] = 8;
        }
        else if (code == ' ')
        {
            _widths[static_cast<std::size_t>(code)] = 5;
        }
        else
        {
            ranked.emplace_back(font.get_glyph(static_cast<std::uint32_t>(code)).width, width_class(code), code);
        }
    }
    std::sort(ranked.begin(), ranked.end());
    const int counts[] = {7, 74, 13};  // of widths 5, 6 and 7; the rest get 8
    std::size_t i = 0;
    for (int w = 0; w < 3; ++w)
    {
        for (int n = 0; n < counts[w]; ++n, ++i)
        {
            _widths[static_cast<std::size_t>(std::get<2>(ranked[i]))] = 5 + w;
        }
    }
    for (; i < ranked.size(); ++i)
    {
        _widths[static_cast<std::size_t>(std::get<2>(ranked[i]))] = 8;
    }
}

void FontStrip::draw_glyph(const PcfFont& font, int code)
{
    const PcfFont::Glyph& g = font.get_glyph(static_cast<std::uint32_t>(code));
    const int cell = get_glyph_width(code);
    // The ink is centred in its cell, so narrow and wide cells space alike.
    const int x0 = get_glyph_x(code) + std::max(0, (cell - g.width) / 2);
    const int rows = std::min(glyph_height, font.get_height());
    for (int y = 0; y < rows; ++y)
    {
        // Ink wider than its cell (none in the fonts used) is cut at the
        // cell's edge rather than drawn over the next glyph.
        for (int x = 0; x < g.width && x < cell; ++x)
        {
            if (font.dot(g, x, y))
            {
                _coverage[static_cast<std::size_t>(y * _width + x0 + x)] = 255;
            }
        }
    }
}

void FontStrip::draw_missing(int code)
{
    // A hollow box, the usual picture of a character without a glyph.
    const int x1 = get_glyph_x(code) + 1;
    const int x2 = x1 + get_glyph_width(code) - 3;
    for (int y = 2; y <= 10; ++y)
    {
        for (int x = x1; x <= x2; ++x)
        {
            if (y == 2 || y == 10 || x == x1 || x == x2)
            {
                _coverage[static_cast<std::size_t>(y * _width + x)] = 255;
            }
        }
    }
}

}  // namespace artgen
