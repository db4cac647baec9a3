#include "BitmapText.h"

#include <cmath>

namespace artgen
{

BitmapText::BitmapText(const PcfFont& font, int scale, bool bold) : _font(font), _scale(scale), _bold(bold)
{
}

int BitmapText::measure(const std::string& text) const
{
    int w = 0;
    for (unsigned char c : text)
    {
        w += (_font.get_glyph(c).advance + (_bold ? 1 : 0)) * _scale;
    }
    return w;
}

bool BitmapText::dot(const PcfFont::Glyph& g, int x, int y) const
{
    // Bold doubles every dot one column to the right.
    return _font.dot(g, x, y) || (_bold && _font.dot(g, x - 1, y));
}

bool BitmapText::filled(const PcfFont::Glyph& g, double u, double v) const
{
    const int cx = static_cast<int>(std::floor(u));
    const int cy = static_cast<int>(std::floor(v));
    if (dot(g, cx, cy))
    {
        return true;
    }
    if (_scale == 1)
    {
        return false;
    }
    // An empty cell between two dots that touch at a corner: fill the
    // triangle next to that corner.
    const double fx = u - cx, fy = v - cy;
    const int dx = fx < 0.5 ? -1 : 1;
    const int dy = fy < 0.5 ? -1 : 1;
    if (!dot(g, cx + dx, cy) || !dot(g, cx, cy + dy))
    {
        return false;
    }
    const double a = dx < 0 ? fx : 1.0 - fx;
    const double b = dy < 0 ? fy : 1.0 - fy;
    return a + b < 0.5;
}

int BitmapText::paint(Canvas& canvas, double x_at, double y_at, const std::string& text, double tone) const
{
    // On whole pixels, so every dot covers exactly its own pixels.
    const double x = std::floor(x_at), y = std::floor(y_at);
    double pen = x;
    for (unsigned char c : text)
    {
        const PcfFont::Glyph& g = _font.get_glyph(c);
        const double left = pen + g.left * _scale;
        const int columns = g.width + (_bold ? 1 : 0);
        canvas.paint({left, y, left + columns * _scale, y + get_height()},
                     [this, &g, left, y](double px, double py) {
                         return filled(g, (px - left) / _scale, (py - y) / _scale);
                     },
                     tone);
        pen += (g.advance + (_bold ? 1 : 0)) * _scale;
    }
    return static_cast<int>(pen - x);
}

void BitmapText::paint_centred(Canvas& canvas, double x, double y, const std::string& text, double tone) const
{
    paint(canvas, std::floor(x - measure(text) / 2.0), y, text, tone);
}

}  // namespace artgen
