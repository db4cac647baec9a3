#include "gadu/Zoom.h"

#include <cstring>

namespace gadu
{

std::int32_t Zoom::to_content(std::int32_t platform) const
{
    const std::int32_t q = platform / _factor;
    return platform % _factor < 0 ? q - 1 : q;
}

Rect Zoom::to_platform(const Rect& content) const
{
    return Rect::of_size(static_cast<std::int64_t>(content.x1) * _factor,
                         static_cast<std::int64_t>(content.y1) * _factor,
                         (static_cast<std::int64_t>(content.x2) - content.x1) * _factor,
                         (static_cast<std::int64_t>(content.y2) - content.y1) * _factor);
}

Rect Zoom::covering(const Rect& platform) const
{
    if (platform.is_empty())
    {
        return Rect{};
    }
    // The last platform pixel is x2 - 1: its block's content pixel is the last one needed.
    return Rect{to_content(platform.x1), to_content(platform.y1), to_content(platform.x2 - 1) + 1,
                to_content(platform.y2 - 1) + 1};
}

void Zoom::expand(const std::uint8_t* src, std::int32_t src_stride, std::int32_t width, std::int32_t height,
                  std::uint8_t* dst, std::int32_t dst_stride) const
{
    const std::size_t row_bytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(_factor) * 4u;
    for (std::int32_t y = 0; y < height; ++y)
    {
        const std::uint8_t* from = src + static_cast<std::ptrdiff_t>(y) * src_stride;
        std::uint8_t* first = dst + static_cast<std::ptrdiff_t>(y) * _factor * dst_stride;
        std::uint8_t* to = first;
        for (std::int32_t x = 0; x < width; ++x, from += 4)
        {
            for (std::int32_t k = 0; k < _factor; ++k, to += 4)
            {
                std::memcpy(to, from, 4);
            }
        }
        // The other rows of the block are copies of the first.
        for (std::int32_t k = 1; k < _factor; ++k)
        {
            std::memcpy(first + static_cast<std::ptrdiff_t>(k) * dst_stride, first, row_bytes);
        }
    }
}

}  // namespace gadu
