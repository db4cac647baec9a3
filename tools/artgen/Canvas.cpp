#include "Canvas.h"

#include <algorithm>
#include <cmath>

namespace artgen
{

namespace
{

// 8 x 8 samples per pixel: 65 coverage levels, finer than the 8-bit alpha
// steps a knob edge can show after the toolkit's bilinear rotation.
constexpr int samples = 8;

}  // namespace

Canvas::Canvas(int width, int height, double tone, double alpha)
    : _width(width),
      _height(height),
      _tone(static_cast<std::size_t>(width) * height, tone),
      _alpha(static_cast<std::size_t>(width) * height, alpha)
{
}

double Canvas::coverage(const Shape& inside, int x, int y)
{
    int hits = 0;
    for (int j = 0; j < samples; ++j)
    {
        for (int i = 0; i < samples; ++i)
        {
            hits += inside(x + (i + 0.5) / samples, y + (j + 0.5) / samples) ? 1 : 0;
        }
    }
    return static_cast<double>(hits) / (samples * samples);
}

void Canvas::paint(const Box& box, const Shape& inside, double tone, double opacity)
{
    const int x1 = std::max(0, static_cast<int>(std::floor(box.x1)));
    const int y1 = std::max(0, static_cast<int>(std::floor(box.y1)));
    const int x2 = std::min(_width, static_cast<int>(std::ceil(box.x2)));
    const int y2 = std::min(_height, static_cast<int>(std::ceil(box.y2)));
    for (int y = y1; y < y2; ++y)
    {
        for (int x = x1; x < x2; ++x)
        {
            const double c = coverage(inside, x, y);
            if (c > 0.0)
            {
                blend(x, y, tone, c * opacity);
            }
        }
    }
}

void Canvas::blend(int x, int y, double tone, double cover)
{
    // Straight (not premultiplied) "over": the tone is the mix weighted by
    // how much each layer shows.
    const std::size_t i = index(x, y);
    const double a = cover + _alpha[i] * (1.0 - cover);
    _tone[i] = a > 0.0 ? (tone * cover + _tone[i] * _alpha[i] * (1.0 - cover)) / a : tone;
    _alpha[i] = a;
}

}  // namespace artgen
