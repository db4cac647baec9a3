#include "gadu/ApicHeader.h"

namespace gadu
{

namespace
{

std::uint32_t read_u32(const std::uint8_t* p)
{
    return static_cast<std::uint32_t>(p[0]) | static_cast<std::uint32_t>(p[1]) << 8
         | static_cast<std::uint32_t>(p[2]) << 16 | static_cast<std::uint32_t>(p[3]) << 24;
}

std::int32_t read_i32(const std::uint8_t* p)
{
    const std::uint32_t u = read_u32(p);
    return u <= 0x7FFFFFFFu ? static_cast<std::int32_t>(u) : -static_cast<std::int32_t>(~u) - 1;
}

// The span [offset, offset + count x unit) lies inside size bytes, without
// overflowing on the way.
bool span_fits(std::uint64_t offset, std::uint64_t count, std::uint64_t unit, std::uint64_t size)
{
    if (offset > size)
    {
        return false;
    }
    const std::uint64_t room = size - offset;
    return unit == 0 || count <= room / unit;
}

}  // namespace

bool ApicHeader::read(const std::uint8_t* data, std::size_t size)
{
    if (data == nullptr || size < static_cast<std::size_t>(kMinHeaderSize))
    {
        return false;
    }
    const std::int32_t header_size = read_i32(data + 4);
    if (read_u32(data) == 0 || header_size < kMinHeaderSize || static_cast<std::uint64_t>(header_size) > size)
    {
        return false;
    }
    kind = read_i32(data + 8);
    bits_per_pixel = read_i32(data + 12);
    width = read_i32(data + 16);
    height = read_i32(data + 20);
    palette_entries = bits_per_pixel == 8 ? read_i32(data + 24) : 0;
    _pixel_offset = read_u32(data + 28);
    _palette_offset = read_u32(data + 32);
    _data = data;
    _size = size;
    // Refusing one negative size as well as two: no drawing code could
    // address such a picture.
    return width >= 0 && height >= 0 && palette_entries >= 0 && palette_entries <= kMaxPaletteEntries;
}

bool ApicHeader::locate(std::int32_t bytes_per_pixel)
{
    const std::uint64_t count = static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height);
    if (!span_fits(_pixel_offset, count, static_cast<std::uint64_t>(bytes_per_pixel), _size))
    {
        return false;
    }
    pixels = _data + _pixel_offset;
    if (bits_per_pixel != 8)
    {
        // Without a palette its offset means nothing, whatever it holds.
        return true;
    }
    if (!span_fits(_palette_offset, static_cast<std::uint64_t>(palette_entries), 4u, _size))
    {
        return false;
    }
    palette = _data + _palette_offset;
    return palette_indices_fit(bytes_per_pixel);
}

bool ApicHeader::palette_indices_fit(std::int32_t bytes_per_pixel) const
{
    // A pixel naming an entry beyond the palette would make drawing read past
    // it; such a resource is refused once here rather than checked per pixel.
    const std::uint64_t count = static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height);
    for (std::uint64_t i = 0; i < count; ++i)
    {
        if (pixels[i * static_cast<std::uint64_t>(bytes_per_pixel)] >= palette_entries)
        {
            return false;
        }
    }
    return true;
}

}  // namespace gadu
