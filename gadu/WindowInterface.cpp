#include "gadu/WindowInterface.h"

#include "gadu/ControlInterface.h"
#include "gadu/GraphicMessage.h"
#include "gadu/MenuRequest.h"
#include "gadu/MessageRoute.h"
#include "gadu/MouseMessage.h"
#include "gadu/RenderingBufferInterface.h"
#include "gadu/SPTreeNodeInterface.h"
#include "gadu/ShowObject.h"
#include "gadu/TextInputRequest.h"

#include <algorithm>

namespace gadu
{

std::int32_t WindowInterface::handle_message(const MessageInterface& message)
{
    if (!is_open())
    {
        return kRefused;
    }
    std::int32_t result = kRefused;
    if (route_as(message, result, *this, &WindowInterface::on_invalidate) ||
        route_as(message, result, *this, &WindowInterface::on_mouse_capture) ||
        route_as(message, result, *this, &WindowInterface::on_mouse_release) ||
        route_as(message, result, *this, &WindowInterface::on_direct_capture) ||
        route_as(message, result, *this, &WindowInterface::on_direct_release) ||
        route_as(message, result, *this, &WindowInterface::on_set_timer) ||
        route_as(message, result, *this, &WindowInterface::on_clear_timer) ||
        route_as(message, result, *this, &WindowInterface::on_text_input_request) ||
        route_as(message, result, *this, &WindowInterface::on_text_input_stop) ||
        route_as(message, result, *this, &WindowInterface::on_menu_request) ||
        route_as(message, result, *this, &WindowInterface::on_menu_stop))
    {
        return result;
    }
    return kRefused;
}

void WindowInterface::disconnect_tree()
{
    send_to_roots(Disconnecting(), true);
    send_to_roots(ShowObject(false), true);
}

void WindowInterface::set_content_size(std::int32_t width, std::int32_t height)
{
    _content_width = std::max(width, 0);
    _content_height = std::max(height, 0);
}

void WindowInterface::set_window_size(std::int32_t width, std::int32_t height)
{
    _window_width = std::max(width, 0);
    _window_height = std::max(height, 0);
}

std::int32_t WindowInterface::get_platform_width() const
{
    return _zoom.to_platform(_resizable ? _content_width : _window_width);
}

std::int32_t WindowInterface::get_platform_height() const
{
    return _zoom.to_platform(_resizable ? _content_height : _window_height);
}

void WindowInterface::set_background_root(SPTreeNodeInterface* root)
{
    replace_root(_background_root, root);
}

void WindowInterface::set_control_root(SPTreeNodeInterface* root)
{
    replace_root(_control_root, root);
}

void WindowInterface::replace_root(SPTreeNodeInterface*& slot, SPTreeNodeInterface* root)
{
    if (slot != nullptr && slot->use_parent() == this)
    {
        slot->set_parent(nullptr);
    }
    slot = root;
    if (root != nullptr)
    {
        root->set_parent(this);
    }
}

void WindowInterface::on_mouse_move(std::int32_t x, std::int32_t y)
{
    _timers.service(get_time());
    // By index: a subscriber may unsubscribe while it handles its message.
    const std::int32_t cx = _zoom.to_content(x);
    const std::int32_t cy = _zoom.to_content(y);
    for (std::size_t i = 0; i < _direct.size(); ++i)
    {
        ControlInterface* control = _direct[i];
        control->handle_message(MouseDirectMove(cx - control->get_x(), cy - control->get_y()));
    }
    send_mouse(x, y, [](CaptureState::Point p) { return MouseMove(p.x, p.y); });
}

void WindowInterface::on_mouse_button(std::int32_t x, std::int32_t y, std::int32_t buttons, std::int32_t modifiers,
                                      std::int32_t double_click)
{
    give_focus_back();
    send_mouse(x, y, [&](CaptureState::Point p) { return MouseClick(p.x, p.y, buttons, modifiers, double_click); });
}

void WindowInterface::on_mouse_wheel(std::int32_t x, std::int32_t y, float delta, std::int32_t modifiers)
{
    send_mouse(x, y, [&](CaptureState::Point p) { return MouseWheelMove(p.x, p.y, delta, modifiers); });
}

void WindowInterface::on_capture_changed()
{
    give_focus_back();
    show_hidden_cursor();
    // Forgotten before it is told, so that the handler may capture again at once.
    MessageHandlerInterface* lost = _capture.use_handler();
    _capture.forget();
    if (lost != nullptr)
    {
        lost->handle_message(MouseCaptureLost());
    }
}

void WindowInterface::on_paint(const Rect& update)
{
    _timers.service(get_time());
    const Rect dirty = _zoom.covering(update).intersected(get_content_rect());
    if (!dirty.is_empty())
    {
        redraw(dirty);
    }
}

void WindowInterface::on_timer_tick()
{
    _timers.service(get_time());
}

void WindowInterface::on_destroyed()
{
    show_hidden_cursor();
}

std::int32_t WindowInterface::on_invalidate(const Invalidate& message)
{
    repaint(_zoom.to_platform(message.get_region().intersected(get_content_rect())));
    return 0;
}

std::int32_t WindowInterface::on_mouse_capture(const MouseCapture& message)
{
    if (!take_capture())
    {
        return kRefused;
    }
    const double now = get_time();
    if (message.get_mode() == capture_mode::hidden || message.get_mode() == capture_mode::relative)
    {
        hide_cursor_once();
    }
    MessageHandlerInterface* previous = _capture.use_handler();
    if (previous != nullptr && previous != message.use_handler())
    {
        previous->handle_message(MouseCaptureLost());
    }
    _capture.begin(message.use_handler(), message.get_mode(), get_cursor_pos(), now);
    _motion_sum = CaptureState::Point{};
    _motion_sent = CaptureState::Point{};
    return 0;
}

std::int32_t WindowInterface::on_mouse_release(const MouseRelease& message)
{
    if (message.use_handler() == nullptr || message.use_handler() != _capture.use_handler())
    {
        return kRefused;
    }
    if (_capture.release_moves_cursor(get_time()))
    {
        set_cursor_pos(message.has_position() ? CaptureState::Point{_zoom.to_platform(message.get_x()),
                                                                    _zoom.to_platform(message.get_y())}
                                              : _capture.get_origin());
    }
    return release_capture() ? 0 : kRefused;
}

std::int32_t WindowInterface::on_direct_capture(const MouseDirectCapture& message)
{
    ControlInterface* control = message.use_control();
    if (control != nullptr && std::find(_direct.begin(), _direct.end(), control) == _direct.end())
    {
        _direct.push_back(control);
    }
    return 0;
}

std::int32_t WindowInterface::on_direct_release(const MouseDirectRelease& message)
{
    _direct.erase(std::remove(_direct.begin(), _direct.end(), message.use_control()), _direct.end());
    return 0;
}

std::int32_t WindowInterface::on_set_timer(const SetTimer& message)
{
    return _timers.add(message);
}

std::int32_t WindowInterface::on_clear_timer(const ClearTimer& message)
{
    return _timers.remove(message);
}

std::int32_t WindowInterface::on_text_input_request(const TextInputRequest& message)
{
    stop_text_input();
    return start_text_input(message);
}

std::int32_t WindowInterface::on_text_input_stop(const TextInputStop& /*message*/)
{
    return stop_text_input();
}

std::int32_t WindowInterface::on_menu_request(const MenuRequest& message)
{
    return show_menu(message);
}

std::int32_t WindowInterface::on_menu_stop(const MenuStop& /*message*/)
{
    return stop_menu();
}

void WindowInterface::hide_cursor_once()
{
    if (!_cursor_hidden)
    {
        show_cursor(false);
        _cursor_hidden = true;
    }
}

void WindowInterface::show_hidden_cursor()
{
    if (_cursor_hidden)
    {
        show_cursor(true);
        _cursor_hidden = false;
    }
}

MessageHandlerInterface* WindowInterface::mouse_target() const
{
    MessageHandlerInterface* handler = _capture.use_handler();
    return handler != nullptr ? handler : _control_root;
}

template <typename Make>
void WindowInterface::send_mouse(std::int32_t x, std::int32_t y, Make make)
{
    MessageHandlerInterface* target = mouse_target();
    if (target == nullptr)
    {
        return;
    }
    const bool motion = _capture.delivers_motion();
    bool warp = false;
    const CaptureState::Point delivered = _capture.deliver(CaptureState::Point{x, y}, get_time(), warp);
    if (warp)
    {
        set_cursor_pos(_capture.get_origin());
    }
    target->handle_message(make(motion ? to_content_motion(delivered)
                                       : CaptureState::Point{_zoom.to_content(delivered.x),
                                                             _zoom.to_content(delivered.y)}));
}

CaptureState::Point WindowInterface::to_content_motion(CaptureState::Point platform_motion)
{
    _motion_sum.x += platform_motion.x;
    _motion_sum.y += platform_motion.y;
    const CaptureState::Point total{_zoom.to_content(_motion_sum.x), _zoom.to_content(_motion_sum.y)};
    const CaptureState::Point step{total.x - _motion_sent.x, total.y - _motion_sent.y};
    _motion_sent = total;
    return step;
}

// Background first so that controls paint over it; on the way out the
// controls let go first.
void WindowInterface::send_to_roots(const MessageInterface& message, bool controls_first) const
{
    SPTreeNodeInterface* const order[2] = {controls_first ? _control_root : _background_root,
                                           controls_first ? _background_root : _control_root};
    for (SPTreeNodeInterface* root : order)
    {
        if (root != nullptr)
        {
            root->handle_message(message);
        }
    }
}

// Column by column, each tile no larger than the buffer; a tile is complete in
// the buffer before it goes to the screen, so nothing half drawn is ever shown.
void WindowInterface::redraw(const Rect& dirty)
{
    send_to_roots(RedrawBegin(dirty), false);
    const std::int32_t step_x = _buffer != nullptr ? _buffer->get_width() : 0;
    const std::int32_t step_y = _buffer != nullptr ? _buffer->get_height() : 0;
    // A buffer without pixels could never cover the region.
    if (step_x > 0 && step_y > 0)
    {
        for (std::int32_t x = dirty.x1; x < dirty.x2; x += std::min(step_x, dirty.x2 - x))
        {
            for (std::int32_t y = dirty.y1; y < dirty.y2; y += std::min(step_y, dirty.y2 - y))
            {
                const Rect tile{x, y, x + std::min(step_x, dirty.x2 - x), y + std::min(step_y, dirty.y2 - y)};
                send_to_roots(Redraw(tile, *_buffer), false);
                _buffer->blit(tile.x1, tile.y1, tile.x2 - tile.x1, tile.y2 - tile.y1);
            }
        }
    }
    send_to_roots(RedrawEnd(dirty), false);
}

}  // namespace gadu
