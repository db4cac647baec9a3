#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vsthost
{

// A picture as the tool captures, stores and compares it: rows top to bottom,
// four bytes per pixel in the order red, green, blue, alpha.
struct Image
{
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgba;

    Image() = default;
    Image(int w, int h) : width(w), height(h), rgba(static_cast<std::size_t>(w) * static_cast<std::size_t>(h) * 4) {}

    const std::uint8_t* use_pixel(int x, int y) const
    {
        return &rgba[(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) * 4];
    }
};

}  // namespace vsthost
