#pragma once

#include "gadu/PicDataInterface.h"
#include "gadu/Picture.h"

#include <cmath>
#include <cstdint>

namespace gadu
{

class RenderingBufferInterface;

// Drawing of a control's pictures with the control's opacity. Below one step
// of an 8-bit alpha nothing would show, so nothing is drawn; from one step
// below full the picture is drawn opaque, which is both exact to the eye and
// the fast path. (x, y) is the buffer origin's position relative to the hot
// spot, as Picture takes it.
namespace opacity_draw
{

constexpr float kInvisible = 1.0f / 256.0f;
constexpr float kOpaque = 1.0f - 1.0f / 256.0f;

inline bool is_visible(float opacity)
{
    return opacity >= kInvisible;
}

inline std::int32_t draw(const Picture& picture, double x, double y, std::int32_t width, std::int32_t height,
                         RenderingBufferInterface& buffer, float opacity)
{
    if (!is_visible(opacity))
    {
        return 0;
    }
    const PicDataInterface* pic = picture.use_picture();
    if (opacity >= kOpaque || pic == nullptr)
    {
        return picture.draw_at(x, y, width, height, buffer);
    }
    // The translating drawing copies at whole-pixel points without fading;
    // the turning one at no angle samples the same pixels and fades them.
    // Pictures without alpha cannot fade and are copied.
    const Rect hit = picture.get_hit_rect();
    const std::int32_t drawn =
        pic->draw_rotated_faded(static_cast<float>(x - hit.x1), static_cast<float>(y - hit.y1), width, height, 0.0f,
                                buffer, picture.get_source_rect(), opacity);
    return drawn != 0 ? drawn : picture.draw_at(x, y, width, height, buffer);
}

inline std::int32_t draw_rotated(const Picture& picture, double x, double y, std::int32_t width,
                                 std::int32_t height, double angle, RenderingBufferInterface& buffer, float opacity)
{
    if (!is_visible(opacity))
    {
        return 0;
    }
    if (opacity >= kOpaque)
    {
        return picture.draw_rotated(x, y, width, height, angle, buffer);
    }
    // An angle too small to turn anything is a translation, faded as above.
    if (!(std::fabs(angle) >= 1e-9))
    {
        return draw(picture, x, y, width, height, buffer, opacity);
    }
    return picture.draw_rotated(x, y, width, height, angle, buffer, opacity);
}

}  // namespace opacity_draw

}  // namespace gadu
