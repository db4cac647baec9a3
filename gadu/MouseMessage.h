#pragma once

#include "gadu/MessageInterface.h"

#include <cstdint>

namespace gadu
{

class ControlInterface;
class MessageHandlerInterface;

// Groups the messages about the pointer, so that a group can route all of
// them top-down with one run-time test.
class MouseMessage
{
public:
    virtual ~MouseMessage() = default;

protected:
    MouseMessage() = default;
};

// Mask bits of mouse messages. Buttons give the state after the event, so the
// release of the last button carries 0; the double-click mask names the button
// whose second press this is.
namespace mouse_button
{
constexpr std::int32_t left = 1;
constexpr std::int32_t right = 2;
constexpr std::int32_t middle = 4;
}  // namespace mouse_button

namespace modifier_key
{
constexpr std::int32_t ctrl = 1;
constexpr std::int32_t shift = 2;
}  // namespace modifier_key

// The pointer position of a positional mouse message, which is also its region.
class MousePointMessage : public MessageDown, public MouseMessage
{
public:
    std::int32_t get_x() const { return get_region().x1; }
    std::int32_t get_y() const { return get_region().y1; }

protected:
    MousePointMessage(std::int32_t x, std::int32_t y) : MessageDown(Rect{x, y, x, y}) {}
};

class MouseClick : public MousePointMessage
{
public:
    MouseClick(std::int32_t x, std::int32_t y, std::int32_t buttons, std::int32_t modifiers, std::int32_t double_click)
        : MousePointMessage(x, y), _buttons(buttons), _modifiers(modifiers), _double_click(double_click)
    {
    }

    std::int32_t get_buttons() const { return _buttons; }
    std::int32_t get_modifiers() const { return _modifiers; }
    std::int32_t get_double_click() const { return _double_click; }

private:
    std::int32_t _buttons;
    std::int32_t _modifiers;
    std::int32_t _double_click;
};

class MouseMove : public MousePointMessage
{
public:
    MouseMove(std::int32_t x, std::int32_t y) : MousePointMessage(x, y) {}
};

class MouseWheelMove : public MousePointMessage
{
public:
    MouseWheelMove(std::int32_t x, std::int32_t y, float delta, std::int32_t modifiers)
        : MousePointMessage(x, y), _delta(delta), _modifiers(modifiers)
    {
    }

    // The wheel never reports buttons; the field is kept for receivers that
    // treat every mouse message alike.
    std::int32_t get_buttons() const { return 0; }
    // In notches: one detent of an ordinary wheel is 1.0.
    float get_delta() const { return _delta; }
    std::int32_t get_modifiers() const { return _modifiers; }

private:
    float _delta;
    std::int32_t _modifiers;
};

// The pointer relative to the receiving control's position, sent on every
// motion to the controls that subscribed with MouseDirectCapture.
class MouseDirectMove : public MousePointMessage
{
public:
    MouseDirectMove(std::int32_t x, std::int32_t y) : MousePointMessage(x, y) {}
};

class MouseCaptureLost : public MessageDown, public MouseMessage
{
public:
    MouseCaptureLost() : MessageDown(WHOLE_AREA) {}
};

// Capture modes: the plain one, one with the cursor hidden, and the endless
// drag that hides the cursor and delivers motion instead of positions.
namespace capture_mode
{
constexpr std::int32_t plain = 0;
constexpr std::int32_t hidden = 1;
constexpr std::int32_t relative = 2;
}  // namespace capture_mode

class MouseCapture : public MessageUp, public MouseMessage
{
public:
    MouseCapture(MessageHandlerInterface* handler, std::int32_t mode) : _handler(handler), _mode(mode) {}

    MessageHandlerInterface* use_handler() const { return _handler; }
    std::int32_t get_mode() const { return _mode; }

private:
    MessageHandlerInterface* _handler;
    std::int32_t _mode;
};

class MouseRelease : public MessageUp, public MouseMessage
{
public:
    explicit MouseRelease(MessageHandlerInterface* handler) : _handler(handler) {}
    // Where an endless drag should leave the cursor, in window pixels.
    MouseRelease(MessageHandlerInterface* handler, std::int32_t x, std::int32_t y)
        : _handler(handler), _x(x), _y(y), _position_set(1)
    {
    }

    MessageHandlerInterface* use_handler() const { return _handler; }
    bool has_position() const { return _position_set != 0; }
    std::int32_t get_x() const { return _x; }
    std::int32_t get_y() const { return _y; }

private:
    MessageHandlerInterface* _handler;
    std::int32_t _x = 0;
    std::int32_t _y = 0;
    std::uint8_t _position_set = 0;
};

// Subscribes a control to MouseDirectMove, or ends its subscription.
class MouseDirectMessage : public MessageUp, public MouseMessage
{
public:
    ControlInterface* use_control() const { return _control; }

protected:
    explicit MouseDirectMessage(ControlInterface* control) : _control(control) {}

private:
    ControlInterface* _control;
};

class MouseDirectCapture : public MouseDirectMessage
{
public:
    explicit MouseDirectCapture(ControlInterface* control) : MouseDirectMessage(control) {}
};

class MouseDirectRelease : public MouseDirectMessage
{
public:
    explicit MouseDirectRelease(ControlInterface* control) : MouseDirectMessage(control) {}
};

}  // namespace gadu
