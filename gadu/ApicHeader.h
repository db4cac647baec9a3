#pragma once

#include <cstddef>
#include <cstdint>

namespace gadu
{

// The header of an APIC resource (pictures and fonts), read and checked against
// the bytes that hold it: everything it points to must lie inside them.
struct ApicHeader
{
    // Every field of the header is a little-endian 32-bit integer.
    static constexpr std::int32_t kMinHeaderSize = 36;
    static constexpr std::int32_t kMaxPaletteEntries = 256;

    std::int32_t kind = 0;
    std::int32_t bits_per_pixel = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    // Zero unless bits_per_pixel is 8.
    std::int32_t palette_entries = 0;
    const std::uint8_t* pixels = nullptr;
    const std::uint8_t* palette = nullptr;

    // Reads the fields and checks those every APIC reader checks the same way:
    // a marker, a header that fits, no negative size, a palette of 0 to 256
    // entries with 8 bits per pixel. Answers false for a refusal.
    bool read(const std::uint8_t* data, std::size_t size);

    // Checks that the palette and width x height pixels of the given size lie
    // inside the resource and sets the pointers. With a palette, every pixel's
    // first byte must also name one of its entries. Answers false for a refusal.
    bool locate(std::int32_t bytes_per_pixel);

private:
    const std::uint8_t* _data = nullptr;
    std::size_t _size = 0;
    std::uint32_t _pixel_offset = 0;
    std::uint32_t _palette_offset = 0;

    bool palette_indices_fit(std::int32_t bytes_per_pixel) const;
};

}  // namespace gadu
