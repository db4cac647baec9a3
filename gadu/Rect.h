#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace gadu
{

// A rectangle of pixels x1 <= x < x2, y1 <= y < y2 (the right and bottom edges
// are exclusive). Regions, hit rectangles and source rectangles all use it.
struct Rect
{
    std::int32_t x1 = 0;
    std::int32_t y1 = 0;
    std::int32_t x2 = 0;
    std::int32_t y2 = 0;

    // The rectangle of the given size at (x, y). Computed wide and clamped to
    // the 32-bit range, so that a far-off origin never wraps around into a
    // rectangle somewhere else.
    static Rect of_size(std::int64_t x, std::int64_t y, std::int64_t width, std::int64_t height)
    {
        return Rect{clamp(x), clamp(y), clamp(x + width), clamp(y + height)};
    }

    bool is_empty() const { return x2 <= x1 || y2 <= y1; }
    bool contains(std::int32_t x, std::int32_t y) const { return x1 <= x && x < x2 && y1 <= y && y < y2; }

    Rect intersected(const Rect& o) const
    {
        return Rect{std::max(x1, o.x1), std::max(y1, o.y1), std::min(x2, o.x2), std::min(y2, o.y2)};
    }

    // Moved by (dx, dy), clamped like of_size: the initial hit rectangle of a
    // control sits at the smallest 32-bit integer and must stay empty when moved.
    Rect moved(std::int64_t dx, std::int64_t dy) const
    {
        return Rect{clamp(x1 + dx), clamp(y1 + dy), clamp(x2 + dx), clamp(y2 + dy)};
    }

    bool operator==(const Rect& o) const { return x1 == o.x1 && y1 == o.y1 && x2 == o.x2 && y2 == o.y2; }
    bool operator!=(const Rect& o) const { return !(*this == o); }

private:
    static std::int32_t clamp(std::int64_t v)
    {
        using limits = std::numeric_limits<std::int32_t>;
        return static_cast<std::int32_t>(std::clamp<std::int64_t>(v, limits::min(), limits::max()));
    }
};

}  // namespace gadu
