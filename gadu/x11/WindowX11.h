#pragma once

#include "gadu/DoubleClickDetector.h"
#include "gadu/WindowInterface.h"
#include "gadu/x11/MenuX11.h"
#include "gadu/x11/RenderingBufferX11.h"

#include <X11/Xlib.h>

#include <cstdint>
#include <memory>
#include <string>

namespace gadu
{

class ConnectionX11;

// The toolkit's window on X11: one child window inside the host's window, on
// a connection of its own to the display, so that nothing the editor does
// touches the host's connection. X11 has no event loop that would call the
// window: the host's idle call does (idle() delivers the queued events, runs
// the timers and paints), and everything here belongs to the thread that
// opened the window. The logic lives in WindowInterface, as on Windows.
//
// Any host adapter can embed it: open(parent) with the parent's window id,
// idle() as often as the host offers, close() before the host's window goes
// (a host that destroys its window first takes ours along safely).
class WindowX11 : public WindowInterface
{
public:
    WindowX11();
    ~WindowX11() override;

    // parent: the host's window id, as a pointer-sized number. 0, or -1 with
    // get_error_text() saying why (no display, no such window, no usable
    // visual); the window is then closed.
    std::int32_t open(void* parent) override;
    void close() override;
    void resize() override;
    void idle() override;
    // Up messages reach the server from outside idle too (an editor that
    // opens, a test); they talk to it under our error handlers as well.
    std::int32_t handle_message(const MessageInterface& message) override;

    // The display to open; empty (the default) means the one DISPLAY names.
    void set_display_name(const std::string& name) { _display_name = name; }
    Window use_handle() const { return _handle; }
    Display* use_display() const;
    const std::string& get_error_text() const { return _error; }
    // Whether frames reach the server through shared memory.
    bool is_shared_memory() const { return _buffer != nullptr && _buffer->is_shared(); }
    const MenuX11& use_menu() const { return _menu; }
    // Protocol errors on this window's connection that nothing expected.
    std::uint32_t get_error_count() const;

protected:
    bool is_open() const override { return _handle != 0; }
    double get_time() const override;
    void repaint(const Rect& region) override;
    bool take_capture() override;
    bool release_capture() override;
    void show_cursor(bool visible) override;
    CaptureState::Point get_cursor_pos() const override { return _pointer; }
    void set_cursor_pos(CaptureState::Point pos) override;
    void give_focus_back() override {}
    std::int32_t show_menu(const MenuRequest& request) override;
    std::int32_t stop_menu() override;
    // No text field on this platform: requests are refused.
    std::int32_t start_text_input(const TextInputRequest& request) override;
    std::int32_t stop_text_input() override;

private:
    bool create_window(Window parent);
    void dispatch(const XEvent& event);
    void on_button(const XButtonEvent& event, bool press);
    void on_crossing(const XCrossingEvent& event);
    void note_pointer(unsigned long serial, std::int32_t x, std::int32_t y);
    void lose_capture();
    void paint();
    void fill_outside_content();
    // The server forgot our window (its parent went): only the client side is left to free.
    void on_window_gone();
    void free_window();

    std::string _display_name;
    std::unique_ptr<ConnectionX11> _connection;
    Window _handle = 0;
    Cursor _blank = 0;
    std::unique_ptr<RenderingBufferX11> _buffer;
    MenuX11 _menu;
    Rect _damage;
    CaptureState::Point _pointer;
    DoubleClickDetector _double_click;
    bool _grabbed = false;
    bool _cursor_hidden = false;
    bool _warp_pending = false;
    unsigned long _warp_serial = 0;
    std::string _error;
};

}  // namespace gadu
