#pragma once

#include "gadu/Rect.h"

#include <cstdint>

namespace gadu
{

class ControlInterface;
class HighlightInterface;
class Picture;
class Redraw;
class RenderingBufferInterface;

// Draws a control's pictures into one tile of a Redraw, placed relative to
// the control's position and faded by the control's opacity. Below one step
// of an 8-bit alpha nothing would show, so nothing is drawn; from one step
// below full the pictures are drawn opaque, which is both exact to the eye
// and the fast path.
class ControlPainter
{
public:
    static constexpr float kInvisible = 1.0f / 256.0f;
    static constexpr float kOpaque = 1.0f - 1.0f / 256.0f;

    ControlPainter(const Redraw& message, const ControlInterface& control, float opacity);

    bool is_visible() const { return _opacity >= kInvisible; }

    // The picture's hot spot lands (dx, dy) from the control's position; fade
    // scales the opacity further.
    std::int32_t draw(const Picture& picture, double dx = 0.0, double dy = 0.0, float fade = 1.0f) const;
    // Turned by angle (radians, counter-clockwise) about its hot spot, which
    // lands on the control's position.
    std::int32_t draw_rotated(const Picture& picture, double angle) const;
    // The highlight pictures of the states that are on.
    void draw_highlights(const ControlInterface& control, const HighlightInterface& pictures) const;

private:
    static float as_drawn(float opacity) { return opacity >= kOpaque ? 1.0f : opacity; }

    RenderingBufferInterface& _buffer;
    // The buffer origin's position relative to the control's position.
    double _x;
    double _y;
    std::int32_t _width;
    std::int32_t _height;
    float _opacity;
};

}  // namespace gadu
