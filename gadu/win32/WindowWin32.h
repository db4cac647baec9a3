#pragma once

#include "gadu/WindowInterface.h"
#include "gadu/win32/MenuWin32.h"
#include "gadu/win32/RenderingBufferWin32.h"
#include "gadu/win32/TextLineEditorWin32.h"

#include <windows.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace gadu
{

// The toolkit's window on Windows: one child window inside the host's editor
// window, painting through an off-screen section and driving the timers from
// a 2 ms thread timer. All the logic lives in WindowInterface; this class
// supplies the platform's primitives and turns its messages into calls.
//
// Use: set the content size (and, for a host that cannot resize, the window
// size with set_resizable(false)), set the roots, then open(parent) with the
// host's window handle and close() before the host destroys it. Every call
// belongs to the thread that opened the window.
class WindowWin32 : public WindowInterface
{
public:
    // Sees every platform message first; answering true with a result ends
    // the message there.
    using MessageFilter = std::function<bool(HWND, UINT, WPARAM, LPARAM, LRESULT&)>;

    WindowWin32();
    ~WindowWin32() override;

    // parent: the HWND to open in. 0, or -1 with get_error_text() saying why.
    std::int32_t open(void* parent) override;
    void close() override;
    void resize() override;

    HWND use_handle() const { return _handle; }
    void set_message_filter(MessageFilter filter) { _filter = std::move(filter); }
    // The last platform failure, for a report; empty when none.
    const std::string& get_error_text() const { return _error; }

    // The window class of this module, the same for every window of it.
    static const char* get_class_name();
    static bool is_class_registered();
    static std::int32_t get_open_count();

protected:
    bool is_open() const override { return _handle != nullptr; }
    double get_time() const override;
    void repaint(const Rect& region) override;
    bool take_capture() override;
    bool release_capture() override;
    void show_cursor(bool visible) override;
    CaptureState::Point get_cursor_pos() const override;
    void set_cursor_pos(CaptureState::Point pos) override;
    void give_focus_back() override;
    std::int32_t show_menu(const MenuRequest& request) override;
    std::int32_t stop_menu() override;
    std::int32_t start_text_input(const TextInputRequest& request) override;
    std::int32_t stop_text_input() override;

private:
    static LRESULT CALLBACK window_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    static void CALLBACK timer_proc(HWND window, UINT message, UINT_PTR id, DWORD time);

    bool register_class();
    void start_timer();
    void stop_timer();
    // Whether the message was one of ours.
    bool translate(UINT message, WPARAM wparam, LPARAM lparam);
    void paint();
    void fill_outside_content(HDC dc) const;
    void on_platform_destroy();

    HWND _handle = nullptr;
    HWND _parent = nullptr;
    UINT_PTR _timer = 0;
    std::unique_ptr<RenderingBufferWin32> _buffer;
    MenuWin32 _menu;
    TextLineEditorWin32 _text;
    MessageFilter _filter;
    std::string _error;
};

}  // namespace gadu
