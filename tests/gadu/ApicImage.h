#pragma once

// Builds APIC resources in memory, so the tests need no embedded resource.

#include "gadu/MemoryRenderingBuffer.h"
#include "gadu/PicDataFactory.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace gadu_test
{

inline void put_u32(std::vector<std::uint8_t>& bytes, std::size_t at, std::uint32_t v)
{
    for (int i = 0; i < 4; ++i)
    {
        bytes[at + i] = static_cast<std::uint8_t>(v >> (8 * i));
    }
}

// Header of 36 bytes, then the palette (4 bytes an entry, given as 0x00RRGGBB),
// then the pixels as given.
inline std::vector<std::uint8_t> make_apic(std::int32_t kind, std::int32_t bits, std::int32_t width,
                                           std::int32_t height, const std::vector<std::uint32_t>& palette,
                                           const std::vector<std::uint8_t>& pixels)
{
    const std::size_t palette_at = 36;
    const std::size_t pixels_at = palette_at + 4 * palette.size();
    std::vector<std::uint8_t> bytes(pixels_at + pixels.size());
    put_u32(bytes, 0, 0xFFFFFFFFu);
    put_u32(bytes, 4, 36);
    put_u32(bytes, 8, static_cast<std::uint32_t>(kind));
    put_u32(bytes, 12, static_cast<std::uint32_t>(bits));
    put_u32(bytes, 16, static_cast<std::uint32_t>(width));
    put_u32(bytes, 20, static_cast<std::uint32_t>(height));
    put_u32(bytes, 24, static_cast<std::uint32_t>(palette.size()));
    put_u32(bytes, 28, static_cast<std::uint32_t>(pixels_at));
    put_u32(bytes, 32, static_cast<std::uint32_t>(palette_at));
    for (std::size_t i = 0; i < palette.size(); ++i)
    {
        put_u32(bytes, palette_at + 4 * i, palette[i]);
    }
    std::copy(pixels.begin(), pixels.end(), bytes.begin() + static_cast<std::ptrdiff_t>(pixels_at));
    return bytes;
}

// An opaque picture whose pixel n (counted along the rows) has the colour
// 0x10 (n + 1): every pixel tells where it came from.
inline std::vector<std::uint8_t> numbered_apic(std::int32_t width, std::int32_t height)
{
    std::vector<std::uint32_t> palette;
    std::vector<std::uint8_t> pixels;
    for (std::int32_t n = 0; n < width * height; ++n)
    {
        palette.push_back(0x10u * static_cast<std::uint32_t>(n + 1));
        pixels.push_back(static_cast<std::uint8_t>(n));
    }
    return make_apic(0, 8, width, height, palette, pixels);
}

// The colour of pixel (x, y) in numbered_apic(width, height).
inline std::uint32_t numbered(std::int32_t x, std::int32_t y, std::int32_t width)
{
    return 0x10u * static_cast<std::uint32_t>(1 + x + width * y);
}

// A picture together with the bytes it reads (null when they are refused).
struct HeldPicture
{
    explicit HeldPicture(std::vector<std::uint8_t> resource)
        : bytes(std::move(resource)),
          pic(gadu::PicDataFactory::use_instance().create_from_bytes(bytes.data(), bytes.size()))
    {
    }
    const gadu::PicDataInterface* operator->() const { return pic.get(); }

    std::vector<std::uint8_t> bytes;
    std::unique_ptr<gadu::PicDataInterface> pic;
};

// Every pixel of a buffer, rows top down.
inline std::vector<std::uint32_t> pixels_of(const gadu::MemoryRenderingBuffer& buffer)
{
    std::vector<std::uint32_t> out;
    for (int y = 0; y < buffer.get_height(); ++y)
    {
        for (int x = 0; x < buffer.get_width(); ++x)
        {
            out.push_back(buffer.get_pixel(x, y));
        }
    }
    return out;
}

}  // namespace gadu_test
