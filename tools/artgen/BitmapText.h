#pragma once

#include "Canvas.h"
#include "PcfFont.h"

#include <string>

namespace artgen
{

// Lettering for the background from a bitmap font, at an integer scale. Each
// dot becomes a square; at scales above 1 the steps of diagonal strokes are
// filled in with small triangles, so large letters read as drawn, not as
// magnified pixels. Text is ISO 8859-1.
class BitmapText
{
public:
    BitmapText(const PcfFont& font, int scale, bool bold);

    int measure(const std::string& text) const;
    int get_height() const { return _font.get_height() * _scale; }

    // Paints the text with its top-left corner at (x, y); returns its width.
    int paint(Canvas& canvas, double x, double y, const std::string& text, double tone) const;
    // The same with the text centred on x.
    void paint_centred(Canvas& canvas, double x, double y, const std::string& text, double tone) const;

private:
    bool filled(const PcfFont::Glyph& g, double u, double v) const;
    bool dot(const PcfFont::Glyph& g, int x, int y) const;

    const PcfFont& _font;
    int _scale;
    bool _bold;
};

}  // namespace artgen
