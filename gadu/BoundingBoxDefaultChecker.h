#pragma once

#include "gadu/Rect.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <utility>

namespace gadu
{

// Decides whether a point hits its owner: by a hit rectangle relative to the
// owner's position, or by a custom checker that replaces the rectangle test
// (for shapes a rectangle does not fit). Controls and pictures are both checkers.
class BoundingBoxDefaultChecker
{
public:
    // Receives the point relative to the owner's position.
    using CustomChecker = std::function<bool(std::int32_t x, std::int32_t y)>;

    BoundingBoxDefaultChecker() = default;
    virtual ~BoundingBoxDefaultChecker() = default;

    Rect get_hit_rect() const { return _hit; }
    void set_hit_rect(const Rect& hit) { _hit = hit; }
    // An empty checker brings the rectangle test back.
    void set_custom_checker(CustomChecker checker) { _custom = std::move(checker); }

    // The point (relative to the owner's position) hits the owner.
    bool check_point(std::int32_t x, std::int32_t y) const { return _custom ? _custom(x, y) : _hit.contains(x, y); }

private:
    // Empty until the owner sets one: nothing is hit by accident.
    static constexpr std::int32_t kUnset = std::numeric_limits<std::int32_t>::min();

    Rect _hit{kUnset, kUnset, kUnset, kUnset};
    CustomChecker _custom;
};

}  // namespace gadu
