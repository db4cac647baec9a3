#pragma once

#include "PcfFont.h"

#include <cstdint>
#include <vector>

namespace artgen
{

// The toolkit's font strip: the 256 glyphs of codes 0 to 255 side by side, 12
// rows high, with a 13th row that marks each glyph's extent by alternating 0
// and 255. Glyph widths are 5 to 8 pixels in fixed numbers (8 of 5, 74 of 6,
// 13 of 7, 161 of 8) that the strip's users rely on; the narrowest glyphs get
// the narrow cells and the capitals and control pictures the wide ones.
class FontStrip
{
public:
    static constexpr int nbr_glyphs = 256;
    static constexpr int glyph_height = 12;
    static constexpr int strip_height = glyph_height + 1;

    explicit FontStrip(const PcfFont& font);

    int get_width() const { return _width; }
    int get_glyph_width(int code) const { return _widths[static_cast<std::size_t>(code)]; }
    int get_glyph_x(int code) const { return _starts[static_cast<std::size_t>(code)]; }
    // Coverage bytes, strip_height rows of get_width() bytes.
    const std::vector<std::uint8_t>& get_coverage() const { return _coverage; }

private:
    void assign_widths(const PcfFont& font);
    void draw_glyph(const PcfFont& font, int code);
    void draw_missing(int code);

    int _width = 0;
    std::vector<int> _widths;
    std::vector<int> _starts;
    std::vector<std::uint8_t> _coverage;
};

}  // namespace artgen
