#include "gadu/FontInterface.h"

namespace gadu
{

FontInterface::FontInterface(std::int32_t width, std::int32_t height, const std::uint8_t* pixels,
                             std::int32_t bytes_per_pixel)
    : _width(width), _height(height), _pixels(pixels), _bytes_per_pixel(bytes_per_pixel)
{
    if (width <= 0 || height <= 0)
    {
        return;
    }
    const std::uint8_t* bottom = pixels + static_cast<std::ptrdiff_t>(height - 1) * width * bytes_per_pixel;
    std::int32_t start = 0;
    for (std::int32_t x = 1; x < width; ++x)
    {
        if (bottom[x * bytes_per_pixel] != bottom[start * bytes_per_pixel])
        {
            _glyphs.push_back(Glyph{x - start, start});
            start = x;
        }
    }
    _glyphs.push_back(Glyph{width - start, start});
}

}  // namespace gadu
