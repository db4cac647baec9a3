#pragma once

#include "gadu/CaptureState.h"
#include "gadu/MessageHandlerInterface.h"
#include "gadu/Rect.h"
#include "gadu/TimerManager.h"
#include "gadu/Zoom.h"

#include <cstdint>
#include <vector>

namespace gadu
{

class ClearTimer;
class ControlInterface;
class Invalidate;
class MenuRequest;
class MenuStop;
class MouseCapture;
class MouseDirectCapture;
class MouseDirectRelease;
class MouseRelease;
class RenderingBufferInterface;
class SPTreeNodeInterface;
class TextInputRequest;
class TextInputStop;

// The end of every up path and the source of every down message. Everything
// a window does with the tree lives here, free of any platform: turning raw
// pointer events into messages, the capture and its endless drag, direct-move
// subscribers, the timer service, and painting the dirty region in tiles of
// the rendering buffer. A platform window derives from it and supplies the
// few primitives below (clock, repaint request, platform capture, cursor,
// menus and text fields), and feeds the events of its platform to the
// on_... operations.
//
// Content pixels are what the tree sees; platform pixels are what the
// platform's events, cursor, repaints and window size are in. The two differ
// by the zoom: at zoom z a content pixel is a z x z block on the platform.
class WindowInterface : public MessageHandlerInterface
{
public:
    ~WindowInterface() override = default;
    WindowInterface(const WindowInterface&) = delete;
    WindowInterface& operator=(const WindowInterface&) = delete;

    // parent: the platform's handle of the window to open in.
    virtual std::int32_t open(void* parent) = 0;
    virtual void close() = 0;
    virtual void resize() = 0;
    // For platforms without an event loop of their own that calls the window
    // (the host's idle call drives the editor there): delivers what the
    // platform queued, runs the timers and paints. Nothing elsewhere.
    virtual void idle() {}

    // Up messages from the tree; -1 while the platform window does not exist.
    std::int32_t handle_message(const MessageInterface& message) override;

    // Tells both trees that the window closes: they let go of it and hide.
    void disconnect_tree();

    // The area the toolkit draws, and the platform window's own size when the
    // host cannot resize it.
    void set_content_size(std::int32_t width, std::int32_t height);
    std::int32_t get_content_width() const { return _content_width; }
    std::int32_t get_content_height() const { return _content_height; }
    void set_window_size(std::int32_t width, std::int32_t height);
    std::int32_t get_window_width() const { return _window_width; }
    std::int32_t get_window_height() const { return _window_height; }
    void set_resizable(bool resizable) { _resizable = resizable; }
    bool is_resizable() const { return _resizable; }
    // Takes effect at the next open.
    void set_zoom(const Zoom& zoom) { _zoom = zoom; }
    const Zoom& use_zoom() const { return _zoom; }
    // The platform window's size: the content when the host can resize, else
    // the window size, zoomed either way.
    std::int32_t get_platform_width() const;
    std::int32_t get_platform_height() const;

    // Not owned; the window becomes the roots' parent. Setting another root (or
    // none) lets go of the earlier one, which a tree that outlives its window
    // needs before the window goes.
    void set_background_root(SPTreeNodeInterface* root);
    void set_control_root(SPTreeNodeInterface* root);
    SPTreeNodeInterface* use_background_root() const { return _background_root; }
    SPTreeNodeInterface* use_control_root() const { return _control_root; }

    MessageHandlerInterface* use_capture_handler() const { return _capture.use_handler(); }
    std::int32_t get_capture_mode() const { return _capture.get_mode(); }
    const std::vector<ControlInterface*>& use_direct_subscribers() const { return _direct; }
    TimerManager& use_timers() { return _timers; }
    RenderingBufferInterface* use_buffer() const { return _buffer; }

protected:
    WindowInterface() = default;

    // Platform events; positions in platform pixels, masks as in MouseClick.
    void on_mouse_move(std::int32_t x, std::int32_t y);
    void on_mouse_button(std::int32_t x, std::int32_t y, std::int32_t buttons, std::int32_t modifiers,
                         std::int32_t double_click);
    void on_mouse_wheel(std::int32_t x, std::int32_t y, float delta, std::int32_t modifiers);
    void on_capture_changed();
    // The platform asks for the update rectangle (platform pixels) to be drawn.
    void on_paint(const Rect& update);
    void on_timer_tick();
    void on_destroyed();

    // The platform's buffer, drawn into tile by tile; not owned.
    void set_buffer(RenderingBufferInterface* buffer) { _buffer = buffer; }
    // See CaptureState: for platforms whose cursor moves only once the queue
    // of earlier events is through.
    void set_deferred_warps(bool deferred) { _capture.set_deferred_warps(deferred); }
    void on_warp_arrived() { _capture.on_warp_arrived(); }

    // The platform primitives.
    virtual bool is_open() const = 0;
    // The toolkit's clock in seconds.
    virtual double get_time() const = 0;
    // Ask for region (platform pixels) to be painted later, without erasing.
    virtual void repaint(const Rect& region) = 0;
    // Whether the window holds the capture afterwards.
    virtual bool take_capture() = 0;
    // Whether the window no longer holds the capture afterwards.
    virtual bool release_capture() = 0;
    virtual void show_cursor(bool visible) = 0;
    // Relative to the window's top-left corner, in platform pixels.
    virtual CaptureState::Point get_cursor_pos() const = 0;
    virtual void set_cursor_pos(CaptureState::Point pos) = 0;
    // Back to whoever had the keyboard before a text field took it (which
    // finishes that field).
    virtual void give_focus_back() = 0;
    virtual std::int32_t show_menu(const MenuRequest& request) = 0;
    virtual std::int32_t stop_menu() = 0;
    virtual std::int32_t start_text_input(const TextInputRequest& request) = 0;
    virtual std::int32_t stop_text_input() = 0;

private:
    std::int32_t on_invalidate(const Invalidate& message);
    std::int32_t on_mouse_capture(const MouseCapture& message);
    std::int32_t on_mouse_release(const MouseRelease& message);
    std::int32_t on_direct_capture(const MouseDirectCapture& message);
    std::int32_t on_direct_release(const MouseDirectRelease& message);
    std::int32_t on_set_timer(const SetTimer& message);
    std::int32_t on_clear_timer(const ClearTimer& message);
    std::int32_t on_text_input_request(const TextInputRequest& message);
    std::int32_t on_text_input_stop(const TextInputStop& message);
    std::int32_t on_menu_request(const MenuRequest& message);
    std::int32_t on_menu_stop(const MenuStop& message);

    Rect get_content_rect() const { return Rect{0, 0, _content_width, _content_height}; }
    void hide_cursor_once();
    void show_hidden_cursor();
    MessageHandlerInterface* mouse_target() const;
    template <typename Make>
    void send_mouse(std::int32_t x, std::int32_t y, Make make);
    CaptureState::Point to_content_motion(CaptureState::Point platform_motion);
    void replace_root(SPTreeNodeInterface*& slot, SPTreeNodeInterface* root);
    void send_to_roots(const MessageInterface& message, bool controls_first) const;
    void redraw(const Rect& dirty);

    std::int32_t _content_width = 0;
    std::int32_t _content_height = 0;
    std::int32_t _window_width = 0;
    std::int32_t _window_height = 0;
    bool _resizable = false;
    Zoom _zoom;
    RenderingBufferInterface* _buffer = nullptr;
    SPTreeNodeInterface* _background_root = nullptr;
    SPTreeNodeInterface* _control_root = nullptr;
    CaptureState _capture;
    // An endless drag's motion in platform pixels since the capture, and how
    // much of it went out in content pixels: a zoomed drag loses no fraction.
    CaptureState::Point _motion_sum;
    CaptureState::Point _motion_sent;
    bool _cursor_hidden = false;
    std::vector<ControlInterface*> _direct;
    TimerManager _timers;
};

}  // namespace gadu
