#include "Preview.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STBIW_WINDOWS_UTF8
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"
#pragma GCC diagnostic ignored "-Wsign-compare"
#endif
#include <stb/stb_image_write.h>
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

#include <stdexcept>

namespace artgen
{

namespace
{

std::int32_t field(const std::vector<std::uint8_t>& b, std::size_t at)
{
    if (at + 4 > b.size())
    {
        throw std::runtime_error("artgen::Preview::decode() : Truncated resource.");
    }
    return static_cast<std::int32_t>(b[at] | b[at + 1] << 8 | b[at + 2] << 16 | static_cast<std::uint32_t>(b[at + 3]) << 24);
}

}  // namespace

Preview::Preview(int width, int height)
    : _width(width), _height(height), _rgba(static_cast<std::size_t>(width) * height * 4, 255)
{
}

Preview Preview::decode(const std::vector<std::uint8_t>& b)
{
    const std::int32_t kind = field(b, 8), bits = field(b, 12), w = field(b, 16), h = field(b, 20);
    const auto pixels_at = static_cast<std::size_t>(field(b, 28));
    const auto palette_at = static_cast<std::size_t>(field(b, 32));
    const std::size_t bytes_per_pixel = kind == 2 ? 1 : (kind == 1 ? 2 : 1);
    if (bits != (kind == 2 ? 0 : 8) || w <= 0 || h <= 0
        || pixels_at + bytes_per_pixel * static_cast<std::size_t>(w) * h > b.size())
    {
        throw std::runtime_error("artgen::Preview::decode() : Not a resource this preview reads.");
    }
    Preview out(w, h);
    for (int y = 0; y < h; ++y)
    {
        for (int x = 0; x < w; ++x)
        {
            const std::uint8_t* p = &b[pixels_at + bytes_per_pixel * (static_cast<std::size_t>(y) * w + x)];
            std::uint8_t* o = &out._rgba[out.index(x, y)];
            if (kind == 2)
            {
                o[0] = o[1] = o[2] = static_cast<std::uint8_t>(255 - p[0]);
                continue;
            }
            const std::size_t entry = palette_at + 4u * p[0];
            if (entry + 4 > b.size())
            {
                throw std::runtime_error("artgen::Preview::decode() : Palette index outside the resource.");
            }
            o[0] = b[entry + 2];
            o[1] = b[entry + 1];
            o[2] = b[entry];
            o[3] = kind == 1 ? p[1] : 255;
        }
    }
    return out;
}

Preview Preview::from_bgrx(int width, int height, const std::uint8_t* pixels)
{
    Preview out(width, height);
    for (std::size_t i = 0; i < static_cast<std::size_t>(width) * height; ++i)
    {
        out._rgba[4 * i] = pixels[4 * i + 2];
        out._rgba[4 * i + 1] = pixels[4 * i + 1];
        out._rgba[4 * i + 2] = pixels[4 * i];
    }
    return out;
}

void Preview::set_grey(int x, int y, std::uint8_t v)
{
    std::uint8_t* d = &_rgba[index(x, y)];
    d[0] = d[1] = d[2] = v;
    d[3] = 255;
}

void Preview::compose(const Preview& over, int x0, int y0)
{
    for (int y = 0; y < over._height; ++y)
    {
        for (int x = 0; x < over._width; ++x)
        {
            const int tx = x0 + x, ty = y0 + y;
            if (tx < 0 || ty < 0 || tx >= _width || ty >= _height)
            {
                continue;
            }
            const std::uint8_t* s = over.pixel(x, y);
            std::uint8_t* d = &_rgba[index(tx, ty)];
            for (int c = 0; c < 3; ++c)
            {
                d[c] = static_cast<std::uint8_t>((s[c] * s[3] + d[c] * (255 - s[3]) + 127) / 255);
            }
        }
    }
}

Preview Preview::scaled(int factor) const
{
    Preview out(_width * factor, _height * factor);
    for (int y = 0; y < out._height; ++y)
    {
        for (int x = 0; x < out._width; ++x)
        {
            const std::uint8_t* s = pixel(x / factor, y / factor);
            std::copy(s, s + 4, &out._rgba[out.index(x, y)]);
        }
    }
    return out;
}

Preview Preview::on_grey(std::uint8_t level) const
{
    Preview out(_width, _height);
    for (int y = 0; y < _height; ++y)
    {
        for (int x = 0; x < _width; ++x)
        {
            out.set_grey(x, y, level);
        }
    }
    out.compose(*this, 0, 0);
    return out;
}

bool Preview::write_png(const std::string& path) const
{
    return stbi_write_png(path.c_str(), _width, _height, 4, _rgba.data(), _width * 4) != 0;
}

}  // namespace artgen
