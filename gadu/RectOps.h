#pragma once

#include "gadu/Rect.h"

#include <algorithm>

namespace gadu
{

// A region whose corners coincide is a point: that is how mouse messages name
// the pixel they concern.
inline bool is_point(const Rect& r)
{
    return r.x1 == r.x2 && r.y1 == r.y2;
}

// Strict overlap: rectangles that only touch along an edge do not overlap.
inline bool overlaps(const Rect& a, const Rect& b)
{
    return a.x2 > b.x1 && a.x1 < b.x2 && a.y2 > b.y1 && a.y1 < b.y2;
}

// The smallest rectangle holding both; an empty one adds nothing.
inline Rect united(const Rect& a, const Rect& b)
{
    if (b.is_empty())
    {
        return a;
    }
    if (a.is_empty())
    {
        return b;
    }
    return Rect{std::min(a.x1, b.x1), std::min(a.y1, b.y1), std::max(a.x2, b.x2), std::max(a.y2, b.y2)};
}

}  // namespace gadu
