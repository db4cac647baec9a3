#pragma once

// Reads the resources back the way the toolkit does, written separately from
// the generator so that a fault in one is not mirrored in the other.
#include <cstddef>
#include <cstdint>
#include <vector>

struct ApicView
{
    std::int32_t marker, header_size, kind, bits, width, height, palette_entries, pixels_at, palette_at;
    const std::vector<std::uint8_t>* bytes;

    explicit ApicView(const std::vector<std::uint8_t>& b) : bytes(&b)
    {
        std::int32_t* fields[] = {&marker, &header_size, &kind, &bits, &width, &height, &palette_entries, &pixels_at, &palette_at};
        for (std::size_t i = 0; i < 9; ++i)
        {
            const std::size_t at = 4 * i;
            *fields[i] = static_cast<std::int32_t>(b.at(at) | b.at(at + 1) << 8 | b.at(at + 2) << 16
                                                   | static_cast<std::uint32_t>(b.at(at + 3)) << 24);
        }
    }

    int bytes_per_pixel() const { return kind == 1 ? 2 : 1; }
    std::uint8_t index(int x, int y) const { return byte(x, y, 0); }
    std::uint8_t alpha(int x, int y) const { return kind == 1 ? byte(x, y, 1) : 255; }
    // Black (index 1) and fully opaque.
    bool black(int x, int y) const { return index(x, y) == 1 && alpha(x, y) == 255; }
    bool white(int x, int y) const { return index(x, y) == 0 && alpha(x, y) == 255; }

private:
    std::uint8_t byte(int x, int y, int k) const
    {
        return bytes->at(static_cast<std::size_t>(pixels_at) + (static_cast<std::size_t>(y) * width + x) * bytes_per_pixel() + k);
    }
};
