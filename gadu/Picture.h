#pragma once

#include "gadu/BoundingBoxDefaultChecker.h"
#include "gadu/PicDataInterface.h"

#include <cstdint>

namespace gadu
{

class RenderingBufferInterface;

// Places a picture by its hot spot: the hit rectangle is kept relative to the
// hot spot, so drawing at a point puts the hot spot there (a knob turns about
// it). The source rectangle selects the part of the picture that is drawn and
// hit. The picture is not owned.
class Picture : public BoundingBoxDefaultChecker
{
public:
    Picture() = default;
    explicit Picture(const PicDataInterface* pic) { set_picture(pic); }

    // Hot spot at the top-left corner; the whole picture as source.
    void set_picture(const PicDataInterface* pic);
    const PicDataInterface* use_picture() const { return _pic; }

    void set_hot_spot(std::int32_t x, std::int32_t y);
    void get_hot_spot(std::int32_t& x, std::int32_t& y) const;

    // Kept inside the picture; an inverted rectangle selects nothing.
    void set_source_rect(const Rect& source);
    Rect get_source_rect() const { return _source; }

    // region is taken relative to the hot spot.
    std::int32_t draw(const Rect& region, RenderingBufferInterface& buffer) const;
    // (x, y) is the buffer origin's position relative to the pivot, where the
    // hot spot lands; angle in radians, counter-clockwise on the screen. An
    // angle too small to turn anything draws a translated copy.
    std::int32_t draw_rotated(double x, double y, std::int32_t width, std::int32_t height, double angle,
                              RenderingBufferInterface& buffer) const;
    // The same, faded by an opacity in [0, 1].
    std::int32_t draw_rotated(double x, double y, std::int32_t width, std::int32_t height, double angle,
                              RenderingBufferInterface& buffer, float opacity) const;
    // (x, y) is the buffer origin's position relative to the hot spot.
    std::int32_t draw_at(double x, double y, std::int32_t width, std::int32_t height,
                         RenderingBufferInterface& buffer, float opacity = 1.0f) const;

    // The point (relative to the hot spot) lies on the drawn part.
    bool hit_test(std::int32_t x, std::int32_t y) const;

private:
    // The picture's origin for a turn: the sample point of the buffer's pixel
    // (0, 0). False when the angle is too small to turn anything (or not a
    // number): the picture is then placed as it is.
    bool get_turned_origin(double x, double y, double angle, float& ox, float& oy) const;

    const PicDataInterface* _pic = nullptr;
    Rect _source;
};

}  // namespace gadu
