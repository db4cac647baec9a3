#include "gadu/ControlPainter.h"

#include "gadu/ControlInterface.h"
#include "gadu/GraphicMessage.h"
#include "gadu/HighlightInterface.h"
#include "gadu/Picture.h"

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
    if (opacity < kInvisible)
    {
        return 0;
    }
    return picture.draw_at(_x - dx, _y - dy, _width, _height, _buffer, as_drawn(opacity));
}

std::int32_t ControlPainter::draw_rotated(const Picture& picture, double angle) const
{
    if (!is_visible())
    {
        return 0;
    }
    return picture.draw_rotated(_x, _y, _width, _height, angle, _buffer, as_drawn(_opacity));
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
