#include "Apic.h"

#include <algorithm>
#include <cmath>

namespace artgen
{

namespace apic
{

namespace
{

constexpr std::uint32_t marker = 0xFFFFFFFFu;

void put_u32(std::vector<std::uint8_t>& out, std::uint32_t v)
{
    for (int i = 0; i < 4; ++i)
    {
        out.push_back(static_cast<std::uint8_t>(v >> (8 * i)));
    }
}

// Header and palette; the pixel rows follow at once.
std::vector<std::uint8_t> start(std::int32_t kind, std::int32_t bits, int width, int height,
                                const std::vector<std::uint32_t>& palette)
{
    std::vector<std::uint8_t> out;
    const auto palette_at = static_cast<std::uint32_t>(header_size);
    const auto pixels_at = static_cast<std::uint32_t>(header_size + 4 * palette.size());
    put_u32(out, marker);
    put_u32(out, header_size);
    put_u32(out, static_cast<std::uint32_t>(kind));
    put_u32(out, static_cast<std::uint32_t>(bits));
    put_u32(out, static_cast<std::uint32_t>(width));
    put_u32(out, static_cast<std::uint32_t>(height));
    put_u32(out, static_cast<std::uint32_t>(palette.size()));
    put_u32(out, pixels_at);
    put_u32(out, palette.empty() ? 0u : palette_at);
    for (std::uint32_t bgr0 : palette)
    {
        put_u32(out, bgr0);
    }
    return out;
}

// Palette entries as stored: blue, green, red, then a zero byte.
const std::vector<std::uint32_t> white_black = {0x00FFFFFFu, 0x00000000u};
const std::vector<std::uint32_t> white_only = {0x00FFFFFFu};

std::uint8_t to_byte(double v)
{
    return static_cast<std::uint8_t>(std::lround(std::clamp(v, 0.0, 1.0) * 255.0));
}

}  // namespace

std::uint8_t to_index(double tone)
{
    return tone >= 0.5 ? 1 : 0;
}

std::vector<std::uint8_t> encode_opaque(const Canvas& canvas)
{
    std::vector<std::uint8_t> out = start(kind_opaque, 8, canvas.get_width(), canvas.get_height(), white_black);
    for (int y = 0; y < canvas.get_height(); ++y)
    {
        for (int x = 0; x < canvas.get_width(); ++x)
        {
            out.push_back(to_index(canvas.tone(x, y)));
        }
    }
    return out;
}

std::vector<std::uint8_t> encode_alpha(const Canvas& canvas)
{
    std::vector<std::uint8_t> out = start(kind_alpha, 8, canvas.get_width(), canvas.get_height(), white_black);
    for (int y = 0; y < canvas.get_height(); ++y)
    {
        for (int x = 0; x < canvas.get_width(); ++x)
        {
            const std::uint8_t a = to_byte(canvas.alpha(x, y));
            // A fully transparent pixel keeps index 0, so equal pictures
            // encode to equal bytes whatever tone their empty parts had.
            out.push_back(a == 0 ? 0 : to_index(canvas.tone(x, y)));
            out.push_back(a);
        }
    }
    return out;
}

std::vector<std::uint8_t> encode_white_mask(const Canvas& canvas)
{
    std::vector<std::uint8_t> out = start(kind_alpha, 8, canvas.get_width(), canvas.get_height(), white_only);
    for (int y = 0; y < canvas.get_height(); ++y)
    {
        for (int x = 0; x < canvas.get_width(); ++x)
        {
            out.push_back(0);
            out.push_back(to_byte(canvas.alpha(x, y)));
        }
    }
    return out;
}

std::vector<std::uint8_t> encode_unicolour_font(int width, int height, const std::vector<std::uint8_t>& coverage)
{
    std::vector<std::uint8_t> out = start(kind_unicolour_font, 0, width, height, {});
    out.insert(out.end(), coverage.begin(), coverage.end());
    return out;
}

}  // namespace apic

}  // namespace artgen
