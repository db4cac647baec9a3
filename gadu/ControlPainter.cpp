#include "gadu/ControlPainter.h"

#include "gadu/ControlInterface.h"
#include "gadu/GraphicMessage.h"
#include "gadu/HighlightInterface.h"
#include "gadu/PicDataInterface.h"
#include "gadu/Picture.h"

#include <cmath>

namespace gadu
{

ControlPainter::ControlPainter(const Redraw& message, const ControlInterface& control, float opacity)
    : _buffer(*message.use_buffer()),
      _x(static_cast<double>(std::int64_t{message.get_region().x1} - control.get_x())),
      _y(static_cast<double>(std::int64_t{message.get_region().y1} - control.get_y())),
      _width(message.get_region().x2 - message.get_region().x1),
      _height(message.get_region().y2 - message.get_region().y1),
      _opacity(opacity)
{
}

std::int32_t ControlPainter::draw(const Picture& picture, double dx, double dy, float fade) const
{
    const float opacity = _opacity * fade;
    const PicDataInterface* pic = picture.use_picture();
    if (opacity < kInvisible || pic == nullptr)
    {
        return 0;
    }
    const double x = _x - dx;
    const double y = _y - dy;
    if (opacity >= kOpaque)
    {
        return picture.draw_at(x, y, _width, _height, _buffer);
    }
    // The translating drawing copies at whole-pixel points without fading;
    // the turning one at no angle samples the same pixels and fades them.
    // Pictures without alpha cannot fade and are copied.
    const Rect hit = picture.get_hit_rect();
    const std::int32_t drawn = pic->draw_rotated_faded(static_cast<float>(x - hit.x1), static_cast<float>(y - hit.y1),
                                                       _width, _height, 0.0f, _buffer, picture.get_source_rect(),
                                                       opacity);
    return drawn != 0 ? drawn : picture.draw_at(x, y, _width, _height, _buffer);
}

std::int32_t ControlPainter::draw_rotated(const Picture& picture, double angle) const
{
    if (!is_visible())
    {
        return 0;
    }
    if (_opacity >= kOpaque)
    {
        return picture.draw_rotated(_x, _y, _width, _height, angle, _buffer);
    }
    // An angle too small to turn anything is a translation, faded as above.
    if (!(std::fabs(angle) >= 1e-9))
    {
        return draw(picture);
    }
    return picture.draw_rotated(_x, _y, _width, _height, angle, _buffer, _opacity);
}

void ControlPainter::draw_highlights(const ControlInterface& control, const HighlightInterface& pictures) const
{
    for (std::int32_t state = 0; state < ControlInterface::kHighlightStates; ++state)
    {
        if (control.is_highlight_state_on(state) && pictures.has_highlight_picture(state))
        {
            draw(pictures.use_highlight_picture(state));
        }
    }
}

}  // namespace gadu
