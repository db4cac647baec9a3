#include "gadu/ControlInterface.h"

#include "gadu/EventListenerInterface.h"
#include "gadu/GraphicMessage.h"
#include "gadu/KeyboardMessage.h"
#include "gadu/MessageRoute.h"
#include "gadu/MouseMessage.h"
#include "gadu/SPTreeNodeInterface.h"
#include "gadu/ShowObject.h"
#include "gadu/TimerMessage.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace gadu
{

namespace
{

// A group that is not yet placed sits at the smallest 32-bit integer; its
// controls must stay far away instead of wrapping around to the other side.
std::int32_t add_clamped(std::int64_t a, std::int64_t b)
{
    using limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(a + b, limits::min(), limits::max()));
}

// Raises a flag for its lifetime and puts the earlier state back, also when a
// slot or a listener throws.
class FlagRaiser
{
public:
    explicit FlagRaiser(bool& flag) : _flag(flag), _saved(flag) { _flag = true; }
    ~FlagRaiser() { _flag = _saved; }
    FlagRaiser(const FlagRaiser&) = delete;
    FlagRaiser& operator=(const FlagRaiser&) = delete;

private:
    bool& _flag;
    bool _saved;
};

}  // namespace

std::int32_t ControlInterface::handle_message(const MessageInterface& message)
{
    const FlagRaiser dispatching(_dispatching);
    for (EventListenerInterface* listener : _listeners)
    {
        listener->before_message(message);
    }
    const std::int32_t result = route(message);
    for (EventListenerInterface* listener : _listeners)
    {
        listener->after_message(message);
    }
    return result;
}

std::int32_t ControlInterface::route(const MessageInterface& message)
{
    // Hidden controls do no drawing work, but still take mouse and timer messages.
    std::int32_t result = 0;
    if (route_as(message, result, *this, &ControlInterface::on_invalidate) ||
        route_as(message, result, *this, &ControlInterface::on_redraw, _visible) ||
        route_as(message, result, *this, &ControlInterface::on_redraw_begin, _visible) ||
        route_as(message, result, *this, &ControlInterface::on_redraw_end, _visible) ||
        route_as(message, result, *this, &ControlInterface::on_mouse_capture) ||
        route_as(message, result, *this, &ControlInterface::on_mouse_release) ||
        route_as(message, result, *this, &ControlInterface::on_mouse_capture_lost) ||
        route_as(message, result, *this, &ControlInterface::on_mouse_move) ||
        route_as(message, result, *this, &ControlInterface::click) ||
        route_as(message, result, *this, &ControlInterface::on_set_timer) ||
        route_as(message, result, *this, &ControlInterface::on_clear_timer) ||
        route_as(message, result, *this, &ControlInterface::on_notify) ||
        route_as(message, result, *this, &ControlInterface::on_key_pressed) ||
        route_as(message, result, *this, &ControlInterface::on_text_input_finished) ||
        route_as(message, result, *this, &ControlInterface::show) ||
        route_as(message, result, *this, &ControlInterface::on_disconnecting) ||
        route_as(message, result, *this, &ControlInterface::on_mouse_direct_capture) ||
        route_as(message, result, *this, &ControlInterface::on_mouse_direct_release) ||
        route_as(message, result, *this, &ControlInterface::on_mouse_direct_move) ||
        route_as(message, result, *this, &ControlInterface::on_mouse_wheel_move))
    {
        return result;
    }
    if (dynamic_cast<const MessageUp*>(&message) != nullptr)
    {
        return pass_up(message);
    }
    return kRefused;
}

// A press (any button down) of an enabled control tells the listeners and
// lights the control up before the control sees the click; a release does not.
std::int32_t ControlInterface::click(const MouseClick& message)
{
    if (message.get_buttons() != 0 && _enabled)
    {
        _pressed = true;
        for (EventListenerInterface* listener : _listeners)
        {
            listener->on_press();
        }
        set_highlight(true);
    }
    return on_mouse_click(message);
}

std::int32_t ControlInterface::show(const ShowObject& message)
{
    _visible = message.is_visible();
    const std::int32_t result = on_show_object(message);
    if (!_visible)
    {
        on_hide();
    }
    return result;
}

bool ControlInterface::hit_test(std::int32_t x, std::int32_t y) const
{
    return check_point(add_clamped(x, -std::int64_t{_x}), add_clamped(y, -std::int64_t{_y}));
}

std::int32_t ControlInterface::request_redraw()
{
    return invalidate_self();
}

std::int32_t ControlInterface::invalidate_self()
{
    if (!_visible)
    {
        return 0;
    }
    return handle_message(Invalidate(get_hit_rect().moved(_x, _y)));
}

void ControlInterface::set_listener(EventListenerInterface* listener)
{
    if (_dispatching)
    {
        throw std::runtime_error("gadu::ControlInterface::set_listener() : Recursive call.");
    }
    _listeners.clear();
    if (listener != nullptr)
    {
        _listeners.push_back(listener);
        listener->attach_control(this);
    }
}

void ControlInterface::set_position(std::int32_t x, std::int32_t y)
{
    _rel_x = x;
    _rel_y = y;
    if (_placed && _group != nullptr)
    {
        follow_group(_group->get_x(), _group->get_y());
    }
}

void ControlInterface::attach_to_group(SPTreeNodeInterface& group)
{
    _group = &group;
    _parent = &group;
    _placed = true;
    follow_group(group.get_x(), group.get_y());
}

void ControlInterface::detach_from_group()
{
    _group = nullptr;
    _parent = nullptr;
    _placed = false;
}

void ControlInterface::follow_group(std::int32_t group_x, std::int32_t group_y)
{
    _x = add_clamped(group_x, _rel_x);
    _y = add_clamped(group_y, _rel_y);
}

bool ControlInterface::set_value(double value, std::int32_t level)
{
    return store_value(value, level, false);
}

bool ControlInterface::set_value_from_param(double value, std::int32_t level)
{
    return store_value(value, level, true);
}

bool ControlInterface::all_agree(std::int32_t level) const
{
    return std::all_of(_listeners.begin(), _listeners.end(),
                       [level](EventListenerInterface* listener) { return listener->check(level); });
}

// Values are normalized: a value that is not a number is refused like a
// listener's refusal, and one outside 0..1 (which no control produces) is
// pulled back in, so that neither ever reaches a parameter or a drawing.
bool ControlInterface::store_value(double value, std::int32_t level, bool from_param)
{
    const FlagRaiser dispatching(_dispatching);
    if (std::isnan(value) || !all_agree(level))
    {
        return false;
    }
    double kept = std::clamp(value, 0.0, 1.0);
    for (EventListenerInterface* listener : _listeners)
    {
        kept = from_param ? listener->value_from_param(kept, level) : listener->value(kept, level);
    }
    for (EventListenerInterface* listener : _listeners)
    {
        kept = listener->forward(kept, level);
    }
    _value = kept;
    if (_auto_redraw || from_param)
    {
        request_redraw();
    }
    return true;
}

void ControlInterface::touch(std::int32_t level)
{
    const FlagRaiser dispatching(_dispatching);
    if (all_agree(level))
    {
        for (EventListenerInterface* listener : _listeners)
        {
            listener->begin(level);
        }
    }
}

void ControlInterface::release(std::int32_t level)
{
    const FlagRaiser dispatching(_dispatching);
    for (EventListenerInterface* listener : _listeners)
    {
        listener->end(level);
    }
}

void ControlInterface::set_highlight_state(std::int32_t state, bool on)
{
    if (state >= 0 && state < kHighlightStates)
    {
        _highlight_states[static_cast<std::size_t>(state)] = on;
    }
}

bool ControlInterface::is_highlight_state_on(std::int32_t state) const
{
    return state >= 0 && state < kHighlightStates && _highlight_states[static_cast<std::size_t>(state)];
}

std::int32_t ControlInterface::pass_up(const MessageInterface& message) const
{
    return _parent != nullptr ? _parent->handle_message(message) : kRefused;
}

}  // namespace gadu
