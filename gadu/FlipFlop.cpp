#include "gadu/FlipFlop.h"

#include "gadu/GraphicMessage.h"
#include "gadu/MouseMessage.h"
#include "gadu/ControlPainter.h"
#include "gadu/PotBehaviour.h"
#include "gadu/TimerMessage.h"
#include "sys/Clock.h"

#include <algorithm>
#include <cmath>

namespace gadu
{

namespace
{

// Durations below this show a change at once.
constexpr double kInstant = 1e-9;

}  // namespace

FlipFlop::FlipFlop() : _states(2) {}

FlipFlop::~FlipFlop() = default;

// The shown state is computed from the count; a switch without states would
// have nothing to show.
void FlipFlop::set_state_count(std::int32_t count)
{
    if (count >= 1)
    {
        _states.resize(static_cast<std::size_t>(count));
    }
}

void FlipFlop::set_state_picture(std::int32_t state, const Picture& picture)
{
    if (state >= 0 && state < get_state_count())
    {
        _states[static_cast<std::size_t>(state)] = PresentPicture{picture, true};
    }
}

void FlipFlop::set_picture(PictureSlot slot, const Picture& picture)
{
    (slot == background ? _background : _overlay) = picture;
    _picture_flags = static_cast<std::uint8_t>(_picture_flags | slot);
}

void FlipFlop::set_opacity(float opacity)
{
    const bool visible_change = std::fabs(opacity - _opacity) > 1e-9 * std::fabs(_opacity);
    _opacity = opacity;
    if (visible_change)
    {
        request_redraw();
    }
}

// Halves round up, and a position a clock hiccup pushed outside 0..1 still
// names a state that exists.
std::int32_t FlipFlop::get_shown_state() const
{
    const double position = is_animating() ? _position : std::floor(get_value() + 0.5);
    const double state = std::floor((get_state_count() - 1) * position + 0.5);
    return static_cast<std::int32_t>(std::clamp(state, 0.0, static_cast<double>(get_state_count() - 1)));
}

void FlipFlop::on_hide()
{
    stop_animation();
}

void FlipFlop::start_animation(double from)
{
    _position = from;
    if (_duration < kInstant)
    {
        _position = get_value();
        request_redraw();
        return;
    }
    _start = sys::get_clock_s();
    std::uint32_t id = kNoTimer;
    if (handle_message(SetTimer(this, kTimerPeriod, id)) == 0)
    {
        _timer_id = id;
    }
}

void FlipFlop::stop_animation()
{
    if (_timer_id != kNoTimer)
    {
        handle_message(ClearTimer(_timer_id));
        _timer_id = kNoTimer;
    }
}

// The switch moves on the press, not on the release: the user feels it
// answer at once.
std::int32_t FlipFlop::on_mouse_click(const MouseClick& message)
{
    if (!is_gesture_press(message) || !is_enabled())
    {
        return 0;
    }
    stop_animation();
    const double old = get_value();
    if (set_value(1.0 - std::floor(old + 0.5), PotBehaviour::kLevelHeld))
    {
        start_animation(old);
    }
    return 1;
}

std::int32_t FlipFlop::on_notify(const Notify& message)
{
    if (message.get_timer_id() != _timer_id || _timer_id == kNoTimer)
    {
        return 0;
    }
    const double elapsed = message.get_time() - _start;
    if (elapsed >= _duration)
    {
        _position = std::clamp(get_value(), 0.0, 1.0);
        stop_animation();
    }
    else
    {
        const double p = elapsed / _duration;
        _position = get_value() >= 0.5 ? p : 1.0 - p;
    }
    request_redraw();
    return 1;
}

std::int32_t FlipFlop::on_redraw(const Redraw& message)
{
    const double value = get_value();
    if (_animate_external && !is_animating() && _duration >= kInstant && std::fabs(value - _last_drawn) >= kInstant)
    {
        start_animation(_last_drawn);
    }
    _last_drawn = value;
    const ControlPainter painter(message, *this, _opacity);
    if (has_picture(background))
    {
        painter.draw(_background);
    }
    const PresentPicture& state = _states[static_cast<std::size_t>(get_shown_state())];
    if (state.present)
    {
        painter.draw(state.picture);
    }
    if (has_picture(overlay))
    {
        painter.draw(_overlay, 0.0, 0.0, _overlay_factor);
    }
    painter.draw_highlights(*this, *this);
    return 0;
}

}  // namespace gadu
