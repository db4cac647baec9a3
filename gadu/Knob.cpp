#include "gadu/Knob.h"

#include "gadu/GraphicMessage.h"
#include "gadu/MouseMessage.h"
#include "gadu/ControlPainter.h"
#include "gadu/RectOps.h"
#include "gadu/TimerMessage.h"
#include "sys/Clock.h"

#include <cmath>
#include <cstdlib>

namespace gadu
{

namespace
{

constexpr double kPi = 3.14159265358979323846;
// A sideways move of the pointer beyond this many pixels from a jog's press
// takes over the jog's speed.
constexpr std::int32_t kJogDeadZone = 4;
// The pointer's sideways distance squared over this gives the jog speed
// (range per second at a jog speed of 1).
constexpr double kJogSpeedScale = 65536.0;

std::size_t slot_index(Knob::PictureSlot slot)
{
    std::size_t index = 0;
    for (unsigned bits = slot; bits > 1; bits >>= 1)
    {
        ++index;
    }
    return index;
}

// The square a picture covers whatever way it turns about its hot spot.
Rect turning_bounds(const Picture& picture)
{
    const Rect hit = picture.get_hit_rect();
    const double dx = std::max(std::fabs(static_cast<double>(hit.x1)), std::fabs(static_cast<double>(hit.x2)));
    const double dy = std::max(std::fabs(static_cast<double>(hit.y1)), std::fabs(static_cast<double>(hit.y2)));
    const auto r = static_cast<std::int64_t>(std::ceil(std::sqrt(dx * dx + dy * dy)));
    return Rect::of_size(-r, -r, 2 * r + 1, 2 * r + 1);
}

Rect grown(const Rect& rect, float margin)
{
    const auto m = static_cast<std::int64_t>(std::ceil(std::fabs(margin)));
    return Rect::of_size(std::int64_t{rect.x1} - m, std::int64_t{rect.y1} - m,
                         std::int64_t{rect.x2} - rect.x1 + 2 * m, std::int64_t{rect.y2} - rect.y1 + 2 * m);
}

}  // namespace

Knob::Knob() : _layers(1), _behaviour(*this) {}

Knob::~Knob() = default;

void Knob::set_picture(PictureSlot slot, const Picture& picture)
{
    _pictures[slot_index(slot)] = picture;
    _picture_flags = static_cast<std::uint8_t>(_picture_flags | slot);
}

void Knob::clear_picture(PictureSlot slot)
{
    _pictures[slot_index(slot)] = Picture();
    _picture_flags = static_cast<std::uint8_t>(_picture_flags & ~slot);
}

const Picture& Knob::use_picture(PictureSlot slot) const
{
    return _pictures[slot_index(slot)];
}

// The layer choice divides by the count, so a knob keeps at least one layer.
void Knob::set_layer_count(std::int32_t count)
{
    if (count >= 1)
    {
        _layers.assign(static_cast<std::size_t>(count), PresentPicture{});
    }
}

void Knob::set_layer_picture(std::int32_t layer, const Picture& picture)
{
    if (layer >= 0 && static_cast<std::size_t>(layer) < _layers.size())
    {
        _layers[static_cast<std::size_t>(layer)] = PresentPicture{picture, true};
    }
}

// The layer choice divides by the span as well; a span of 0 covers no angle.
void Knob::set_layer_span(float turns)
{
    if (turns != 0.0f && std::isfinite(turns))
    {
        _layer_span = turns;
    }
}

// A drag divides its motion by this; 0 would turn every pixel into infinity.
void Knob::set_pixels_per_range(std::int32_t pixels)
{
    if (pixels != 0)
    {
        _pixels_per_range = pixels;
    }
}

void Knob::set_angle(float offset_turns, float span_turns)
{
    _angle_offset = offset_turns;
    _angle_span = span_turns;
    request_redraw();
}

void Knob::set_shadow_offset(float x, float y)
{
    _shadow_x = x;
    _shadow_y = y;
}

void Knob::set_opacity(float opacity)
{
    const bool visible_change = std::fabs(opacity - _opacity) > 1e-9 * std::fabs(_opacity);
    _opacity = opacity;
    if (visible_change)
    {
        request_redraw();
    }
}

double Knob::get_angle() const
{
    return 2.0 * kPi * (get_value() * _angle_span + _angle_offset);
}

bool Knob::shows_drag_pointer() const
{
    return _behaviour.get_state() == PotBehaviour::drag && !_released && has_picture(drag_pointer);
}

// The lower-left triangle lies below the line y/h = x/w + 2/3, the
// lower-right one below x/w + y/h = 5/3 (x, y from the area's top-left
// corner). Whatever the sign of the span, the lower-left one turns the body
// counter-clockwise and the lower-right one clockwise.
std::int32_t Knob::get_jog_direction(std::int32_t x, std::int32_t y) const
{
    const Picture& first = _layers.front().picture;
    const Rect area = _layers.front().present && first.use_picture() != nullptr ? first.get_hit_rect()
                                                                                 : get_hit_rect();
    const std::int64_t w = std::int64_t{area.x2} - area.x1;
    const std::int64_t h = std::int64_t{area.y2} - area.y1;
    const std::int64_t px = std::int64_t{x} - get_x() - area.x1;
    const std::int64_t py = std::int64_t{y} - get_y() - area.y1;
    const std::int32_t sign = _angle_span > 0.0f ? 1 : (_angle_span < 0.0f ? -1 : 0);
    if (w <= 0 || h <= 0)
    {
        return 0;
    }
    if (3 * py * w > (3 * px + 2 * w) * h)
    {
        return sign;
    }
    if (3 * py * w > (5 * w - 3 * px) * h)
    {
        return -sign;
    }
    return 0;
}

void Knob::on_hide()
{
    _behaviour.stop();
}

// Pictures may reach beyond the hit rectangle: a body turns about its hot
// spot, and the other pictures move with the pointer offset.
std::int32_t Knob::invalidate_self()
{
    if (!is_visible())
    {
        return 0;
    }
    Rect area = get_hit_rect();
    const float margin = std::fabs(_pointer_radius) + std::fabs(_shadow_x) + std::fabs(_shadow_y);
    for (PictureSlot slot : {body, background, foreground, drag_pointer, shadow, overlay})
    {
        if (has_picture(slot))
        {
            const Picture& picture = use_picture(slot);
            area = united(area, slot == body && _rotate_body ? turning_bounds(picture)
                                                             : grown(picture.get_hit_rect(), margin));
        }
    }
    for (const PresentPicture& layer : _layers)
    {
        if (layer.present)
        {
            area = united(area, turning_bounds(layer.picture));
        }
    }
    return handle_message(Invalidate(area.moved(get_x(), get_y())));
}

std::int32_t Knob::on_redraw(const Redraw& message)
{
    const ControlPainter painter(message, *this, _opacity);
    if (!painter.is_visible())
    {
        return 0;
    }
    const auto draw = [&](PictureSlot slot, double dx, double dy) {
        if (has_picture(slot))
        {
            painter.draw(use_picture(slot), dx, dy);
        }
    };

    draw(background, 0.0, 0.0);
    const double angle = get_angle();
    const double offset_x = _pointer_radius * std::cos(angle);
    const double offset_y = -_pointer_radius * std::sin(angle);
    draw_layer(painter, angle);
    if (!_rotate_body)
    {
        draw(shadow, offset_x - _shadow_x, offset_y - _shadow_y);
        draw(body, offset_x, offset_y);
    }
    else if (has_picture(body))
    {
        painter.draw_rotated(use_picture(body), angle);
    }
    draw(overlay, 0.0, 0.0);
    painter.draw_highlights(*this, *this);
    draw(foreground, 0.0, 0.0);
    if (shows_drag_pointer())
    {
        draw(drag_pointer, 0.0, 0.0);
    }
    return 0;
}

// The angle picks one of the layers, spread evenly over the layer span; the
// chosen one turns by what is left of the angle within its share, about the
// middle of the share.
void Knob::draw_layer(const ControlPainter& painter, double angle) const
{
    const auto count = static_cast<double>(_layers.size());
    const double u = (angle * 0.5 / kPi - _layer_phase) / _layer_span + 0.5 / count;
    const double scaled = (u - std::floor(u)) * count;
    // A configuration that is not a number picks no layer at all.
    if (!std::isfinite(scaled))
    {
        return;
    }
    const auto index = static_cast<std::size_t>(std::min(std::floor(scaled), count - 1.0));
    const PresentPicture& layer = _layers[index];
    if (layer.present)
    {
        const double residual = _layer_span / count * (scaled - static_cast<double>(index) - 0.5);
        painter.draw_rotated(layer.picture, 2.0 * kPi * residual);
    }
}

std::int32_t Knob::on_mouse_click(const MouseClick& message)
{
    if (message.get_buttons() != 0 && !is_gesture_press(message))
    {
        return 0;
    }
    const bool was_shown = shows_drag_pointer();
    const std::int32_t result = message.get_buttons() != 0 ? press(message) : release_button();
    follow_pointer(was_shown);
    return result;
}

std::int32_t Knob::press(const MouseClick& message)
{
    _button_down = true;
    if (message.get_double_click() != 0)
    {
        // The smoothing tail of the first click must not pull the reset back.
        if (_released)
        {
            _behaviour.stop();
        }
        set_value(get_default_value(), PotBehaviour::kLevelReset);
        return 1;
    }
    // Another button during a gesture belongs to that gesture.
    if (_behaviour.get_state() != PotBehaviour::idle && !_released)
    {
        return 1;
    }
    if (!is_enabled())
    {
        return 0;
    }
    _released = false;
    _behaviour.stop();
    const double now = sys::get_clock_s();
    const std::int32_t direction = get_jog_direction(message.get_x(), message.get_y());
    if (direction != 0)
    {
        _press_x = message.get_x();
        _press_y = message.get_y();
        _behaviour.request_jog_speed(direction * static_cast<double>(_jog_speed), false);
        _behaviour.start_jog(now);
    }
    else
    {
        _behaviour.start_drag(now);
    }
    return 1;
}

std::int32_t Knob::release_button()
{
    if (!_button_down)
    {
        return 0;
    }
    _button_down = false;
    release(PotBehaviour::kLevelHeld);
    _behaviour.release_capture();
    _released = true;
    return 1;
}

std::int32_t Knob::on_mouse_move(const MouseMove& message)
{
    const bool was_shown = shows_drag_pointer();
    std::int32_t result = 0;
    if (_behaviour.get_state() == PotBehaviour::drag && !_released)
    {
        _behaviour.drag_step(-message.get_y(), message.get_x(), _fine_factor, _pixels_per_range,
                             sys::get_clock_s());
        result = 1;
    }
    else if (_behaviour.get_state() == PotBehaviour::jog && !_released)
    {
        const std::int64_t dx = std::int64_t{message.get_x()} - _press_x;
        if (std::llabs(dx) > kJogDeadZone)
        {
            const auto d = static_cast<double>(dx);
            _behaviour.request_jog_speed(std::fabs(d) * d * _jog_speed / kJogSpeedScale, true);
        }
        result = 1;
    }
    follow_pointer(was_shown);
    return result;
}

// The knob's own release lets go of the capture before the loss is reported.
// A loss while the knob still holds it means the platform took the mouse away
// (another window, a system dialog): the button's release will go elsewhere,
// so the gesture ends here, or the parameter would stay held.
std::int32_t Knob::on_mouse_capture_lost(const MouseCaptureLost& /*message*/)
{
    const bool taken_away = _behaviour.holds_capture();
    _behaviour.forget_capture();
    if (taken_away && _button_down)
    {
        const bool was_shown = shows_drag_pointer();
        release_button();
        follow_pointer(was_shown);
    }
    return 0;
}

std::int32_t Knob::on_notify(const Notify& message)
{
    if (!_behaviour.is_timer(message.get_timer_id()))
    {
        return 0;
    }
    const bool was_shown = shows_drag_pointer();
    _behaviour.tick(message.get_time(), _button_down);
    follow_pointer(was_shown);
    return 1;
}

void Knob::follow_pointer(bool was_shown)
{
    if (was_shown != shows_drag_pointer())
    {
        request_redraw();
    }
}

}  // namespace gadu
