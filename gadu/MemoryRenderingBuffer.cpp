#include "gadu/MemoryRenderingBuffer.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace gadu
{

MemoryRenderingBuffer::MemoryRenderingBuffer(std::int32_t width, std::int32_t height, MemoryRenderingBuffer* screen)
    : RenderingBufferInterface(std::max(width, 0), std::max(height, 0)),
      _pixels(static_cast<std::size_t>(_width) * static_cast<std::size_t>(_height) * 4u, 0),
      _screen(screen)
{
}

void MemoryRenderingBuffer::blit(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height)
{
    if (_screen == nullptr)
    {
        return;
    }
    // In screen coordinates: the part of the screen the blit covers, limited to
    // what this buffer holds.
    const Rect area = Rect::of_size(x, y, std::min(width, _width), std::min(height, _height))
                          .intersected(_screen->get_area_at(0, 0));
    if (area.is_empty())
    {
        return;
    }
    const std::size_t row_bytes = static_cast<std::size_t>(area.x2 - area.x1) * 4u;
    for (std::int32_t row = area.y1; row < area.y2; ++row)
    {
        const std::uint8_t* from = _pixels.data() + (static_cast<std::size_t>(row - y) * _width + (area.x1 - x)) * 4u;
        std::uint8_t* to = _screen->pixels() + (static_cast<std::size_t>(row) * _screen->_width + area.x1) * 4u;
        std::memcpy(to, from, row_bytes);
    }
}

std::uint32_t MemoryRenderingBuffer::get_pixel(std::int32_t x, std::int32_t y) const
{
    if (!get_area_at(0, 0).contains(x, y))
    {
        return 0;
    }
    const std::uint8_t* p = _pixels.data() + (static_cast<std::size_t>(y) * _width + x) * 4u;
    return static_cast<std::uint32_t>(p[0]) | static_cast<std::uint32_t>(p[1]) << 8
         | static_cast<std::uint32_t>(p[2]) << 16 | static_cast<std::uint32_t>(p[3]) << 24;
}

void MemoryRenderingBuffer::set_pixel(std::int32_t x, std::int32_t y, std::uint32_t value)
{
    if (!get_area_at(0, 0).contains(x, y))
    {
        return;
    }
    std::uint8_t* p = _pixels.data() + (static_cast<std::size_t>(y) * _width + x) * 4u;
    for (int i = 0; i < 4; ++i)
    {
        p[i] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

void MemoryRenderingBuffer::fill(std::uint32_t value)
{
    for (std::int32_t y = 0; y < _height; ++y)
    {
        for (std::int32_t x = 0; x < _width; ++x)
        {
            set_pixel(x, y, value);
        }
    }
}

}  // namespace gadu
