#include "gadu/MemoryRenderingBuffer.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace gadu
{

MemoryRenderingBuffer::MemoryRenderingBuffer(std::int32_t width, std::int32_t height, MemoryRenderingBuffer* screen,
                                             const Zoom& zoom)
    : RenderingBufferInterface(std::max(width, 0), std::max(height, 0)),
      _pixels(static_cast<std::size_t>(_width) * static_cast<std::size_t>(_height) * 4u, 0),
      _screen(screen),
      _zoom(zoom)
{
}

void MemoryRenderingBuffer::blit(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height)
{
    if (_screen == nullptr)
    {
        return;
    }
    // In this buffer's pixels at the screen's position: the part of the screen
    // the blit covers (whole blocks only), limited to what this buffer holds.
    const Rect screen_area{0, 0, _zoom.to_content(_screen->_width), _zoom.to_content(_screen->_height)};
    const Rect area =
        Rect::of_size(x, y, std::min(width, _width), std::min(height, _height)).intersected(screen_area);
    if (area.is_empty())
    {
        return;
    }
    const std::int32_t stride = _width * 4;
    const std::int32_t screen_stride = _screen->_width * 4;
    const std::uint8_t* from = _pixels.data() + (static_cast<std::size_t>(area.y1 - y) * _width + (area.x1 - x)) * 4u;
    std::uint8_t* to = _screen->pixels() + (static_cast<std::size_t>(_zoom.to_platform(area.y1)) * _screen->_width
                                            + _zoom.to_platform(area.x1)) * 4u;
    _zoom.expand(from, stride, area.x2 - area.x1, area.y2 - area.y1, to, screen_stride);
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
