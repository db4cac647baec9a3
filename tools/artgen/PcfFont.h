#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace artgen
{

// A bitmap font read from an X11 portable compiled font file (.pcf, optionally
// gzip-compressed), the format Debian ships its bitmap fonts in. Only what the
// artwork needs is kept: for every character code its advance and its ink as a
// grid of cell_width x height dots whose top row is the font's ascent line.
class PcfFont
{
public:
    struct Glyph
    {
        bool present = false;
        int advance = 0;
        int left = 0;                 // the ink's first column relative to the pen
        int width = 0;                // ink columns
        std::vector<std::uint8_t> dots;  // width x font height, row by row, 0 or 1
    };

    // Reads the file; throws std::runtime_error when it cannot be read or is
    // not a font of this format.
    explicit PcfFont(const std::string& path);

    int get_height() const { return _ascent + _descent; }

    // The glyph of a Unicode code point; absent when the font has none.
    const Glyph& get_glyph(std::uint32_t code) const;

    // Whether the glyph has a dot at ink column x, row y (row 0 at the top of
    // the font's height); false outside the ink.
    bool dot(const Glyph& g, int x, int y) const;

private:
    void read_tables(const std::vector<std::uint8_t>& file);

    int _ascent = 0;
    int _descent = 0;
    std::vector<Glyph> _glyphs;  // by code point, up to 0xFFFF
    Glyph _missing;
};

}  // namespace artgen
