#pragma once

#include "gadu/BoundingBoxDefaultChecker.h"
#include "gadu/GraphicMessage.h"
#include "gadu/KeyboardMessage.h"
#include "gadu/MessageHandlerInterface.h"
#include "gadu/MouseMessage.h"
#include "gadu/ShowObject.h"
#include "gadu/TimerMessage.h"

#include <array>
#include <cstdint>
#include <vector>

namespace gadu
{

class EventListenerInterface;
class SPTreeNodeInterface;

// A leaf of the tree: something the user sees and handles. handle_message is
// the ladder that routes each message by its run-time type to one virtual
// operation; subclasses override the ones they care about. Up messages a
// control sends itself go through the same ladder, so a subclass can see (and
// change) what leaves it. The hit rectangle is relative to the control's
// absolute position.
class ControlInterface : public BoundingBoxDefaultChecker, public MessageHandlerInterface
{
public:
    ControlInterface() = default;
    ControlInterface(const ControlInterface&) = delete;
    ControlInterface& operator=(const ControlInterface&) = delete;

    // The ladder; see the class comment.
    std::int32_t handle_message(const MessageInterface& message) final;

    // The point is in window pixels.
    virtual bool hit_test(std::int32_t x, std::int32_t y) const;
    virtual std::int32_t request_redraw();
    virtual void on_hide() {}
    virtual void set_highlight(bool /*highlighted*/) {}

    // The ladder's slots. Up messages go to the parent by default (-1 without
    // one); down messages are ignored (0).
    virtual std::int32_t on_invalidate(const Invalidate& message) { return pass_up(message); }
    virtual std::int32_t on_redraw_begin(const RedrawBegin& /*message*/) { return 0; }
    virtual std::int32_t on_redraw(const Redraw& /*message*/) { return 0; }
    virtual std::int32_t on_redraw_end(const RedrawEnd& /*message*/) { return 0; }
    virtual std::int32_t on_mouse_capture(const MouseCapture& message) { return pass_up(message); }
    virtual std::int32_t on_mouse_release(const MouseRelease& message) { return pass_up(message); }
    virtual std::int32_t on_mouse_capture_lost(const MouseCaptureLost& /*message*/) { return 0; }
    virtual std::int32_t on_mouse_move(const MouseMove& /*message*/) { return 0; }
    virtual std::int32_t on_mouse_click(const MouseClick& /*message*/) { return 0; }
    virtual std::int32_t on_set_timer(const SetTimer& message) { return pass_up(message); }
    virtual std::int32_t on_clear_timer(const ClearTimer& message) { return pass_up(message); }
    virtual std::int32_t on_notify(const Notify& /*message*/) { return 0; }
    virtual std::int32_t on_key_pressed(const KeyPressed& /*message*/) { return 0; }
    virtual std::int32_t on_text_input_finished(const TextInputFinished& /*message*/) { return 0; }
    virtual std::int32_t on_show_object(const ShowObject& /*message*/) { return 0; }
    virtual std::int32_t on_disconnecting(const Disconnecting& /*message*/) { return 0; }
    virtual std::int32_t on_mouse_direct_capture(const MouseDirectCapture& message) { return pass_up(message); }
    virtual std::int32_t on_mouse_direct_release(const MouseDirectRelease& message) { return pass_up(message); }
    virtual std::int32_t on_mouse_direct_move(const MouseDirectMove& /*message*/) { return 0; }
    virtual std::int32_t on_mouse_wheel_move(const MouseWheelMove& /*message*/) { return 0; }
    // Asks the window to redraw the control's hit rectangle; nothing while hidden.
    virtual std::int32_t invalidate_self();

    // Replaces the listeners by this one (none when null). Throws while the
    // control is handling a message: a listener must not swap itself out from
    // under the ladder that is calling it.
    void set_listener(EventListenerInterface* listener);
    const std::vector<EventListenerInterface*>& use_listeners() const { return _listeners; }

    // Relative to the group; the absolute position follows when placed.
    void set_position(std::int32_t x, std::int32_t y);
    std::int32_t get_x() const { return _x; }
    std::int32_t get_y() const { return _y; }
    std::int32_t get_rel_x() const { return _rel_x; }
    std::int32_t get_rel_y() const { return _rel_y; }

    // Called by the group that takes or lets go of the control, and when the
    // group moves.
    void attach_to_group(SPTreeNodeInterface& group);
    void detach_from_group();
    void follow_group(std::int32_t group_x, std::int32_t group_y);
    bool is_placed() const { return _placed; }
    MessageHandlerInterface* use_parent() const { return _parent; }

    bool is_enabled() const { return _enabled; }
    void set_enabled(bool enabled) { _enabled = enabled; }
    bool is_visible() const { return _visible; }
    bool is_pressed() const { return _pressed; }
    void set_pressed(bool pressed) { _pressed = pressed; }
    bool is_dispatching() const { return _dispatching; }

    // The value protocol. A control holds one normalized value; the level is
    // the priority of the change's source, which the listeners weigh.
    // set_value is a change by the user: every listener must agree (check),
    // then the value passes through every listener's value and forward hooks.
    // False when a listener refused; the value stays where it was.
    bool set_value(double value, std::int32_t level);
    // A change from the parameter side: the same, but through the hook that
    // does not write back to the parameter, and always redrawn.
    bool set_value_from_param(double value, std::int32_t level);
    // A gesture starts (when every listener agrees) or ends.
    void touch(std::int32_t level);
    void release(std::int32_t level);
    double get_value() const { return _value; }
    void set_default_value(double value) { _default_value = value; }
    double get_default_value() const { return _default_value; }
    // Set by default: every accepted change asks for a redraw.
    void set_auto_redraw(bool on) { _auto_redraw = on; }
    bool is_auto_redraw() const { return _auto_redraw; }

    // The buttons whose presses start the control's own gestures (all by
    // default). An editor that keeps a button for itself (a context menu on
    // the right button) leaves it out: the control then ignores presses of
    // that button alone, and the listeners still see every click.
    void set_gesture_buttons(std::int32_t mask) { _gesture_buttons = mask; }
    bool is_gesture_press(const MouseClick& message) const { return (message.get_buttons() & _gesture_buttons) != 0; }

    // Highlight states 0 to 3; a control draws the highlight picture of each
    // state that is on. Other states are off and cannot be switched on.
    static constexpr std::int32_t kHighlightStates = 4;
    void set_highlight_state(std::int32_t state, bool on);
    bool is_highlight_state_on(std::int32_t state) const;

    // What the editor last said about a MIDI controller bound to the control's
    // parameter (-1: nothing); the toolkit only keeps it for the drawing.
    void set_learn_state(std::int32_t state) { _learn_state = state; }
    std::int32_t get_learn_state() const { return _learn_state; }

protected:
    // The parent's answer to an up message, or -1 without a parent.
    std::int32_t pass_up(const MessageInterface& message) const;

private:
    std::int32_t route(const MessageInterface& message);
    std::int32_t click(const MouseClick& message);
    std::int32_t show(const ShowObject& message);
    bool all_agree(std::int32_t level) const;
    bool store_value(double value, std::int32_t level, bool from_param);

    std::int32_t _x = 0;
    std::int32_t _y = 0;
    std::int32_t _rel_x = 0;
    std::int32_t _rel_y = 0;
    SPTreeNodeInterface* _group = nullptr;
    MessageHandlerInterface* _parent = nullptr;
    bool _placed = false;
    std::vector<EventListenerInterface*> _listeners;
    bool _dispatching = false;
    bool _enabled = true;
    bool _visible = false;
    bool _pressed = false;
    double _value = 0.0;
    double _default_value = 0.0;
    bool _auto_redraw = true;
    std::int32_t _gesture_buttons = mouse_button::left | mouse_button::right | mouse_button::middle;
    std::array<bool, kHighlightStates> _highlight_states{};
    std::int32_t _learn_state = -1;
};

}  // namespace gadu
