#include "gadu/win32/WindowWin32.h"

#include "gadu/MouseWord.h"
#include "gadu/win32/PlatformWin32.h"
#include "sys/Clock.h"
#include "sys/FpuModeGuard.h"

#include <cstdio>
#include <map>
#include <mutex>

namespace gadu
{

namespace
{

constexpr char kTitle[] = "Velnor Audio Plug-in";
// The system raises shorter periods to its own minimum; asking for 2 ms gets
// the fastest it offers.
constexpr UINT kTimerPeriodMs = 2;

// What the windows of this module share. Editors normally live on the host's
// one editor thread, but nothing stops a host from opening two on two
// threads, so the little state there is sits behind a lock that only editor
// threads ever take.
struct ProcessState
{
    std::mutex lock;
    bool class_registered = false;
    std::int32_t open_windows = 0;
    std::map<UINT_PTR, WindowWin32*> timers;
};

ProcessState& use_process()
{
    static ProcessState state;
    return state;
}

}  // namespace

WindowWin32::WindowWin32() = default;

WindowWin32::~WindowWin32()
{
    close();
    ProcessState& process = use_process();
    std::lock_guard<std::mutex> guard(process.lock);
    if (process.class_registered && process.open_windows == 0)
    {
        // Refused, the class stays registered and serves the next window.
        if (::UnregisterClassA(get_class_name(), use_module_win32()) != 0)
        {
            process.class_registered = false;
        }
    }
}

// Named after the window procedure's address, so that two copies of the
// plug-in loaded from two files never share (and never unregister) each
// other's class.
const char* WindowWin32::get_class_name()
{
    static const std::string name = [] {
        const auto address = reinterpret_cast<std::uintptr_t>(&WindowWin32::window_proc);
        char text[32] = {};
        std::snprintf(text, sizeof(text), "VelnorAudioPlugin%08X", static_cast<unsigned>(address & 0xFFFFFFFFu));
        return std::string(text);
    }();
    return name.c_str();
}

bool WindowWin32::is_class_registered()
{
    ProcessState& process = use_process();
    std::lock_guard<std::mutex> guard(process.lock);
    return process.class_registered;
}

std::int32_t WindowWin32::get_open_count()
{
    ProcessState& process = use_process();
    std::lock_guard<std::mutex> guard(process.lock);
    return process.open_windows;
}

// Counts the window as open before it exists, under the same lock as the
// registration: another thread's last window going meanwhile must not take
// the class away from under the window about to be made.
bool WindowWin32::register_class_and_count()
{
    ProcessState& process = use_process();
    std::lock_guard<std::mutex> guard(process.lock);
    if (!process.class_registered)
    {
        WNDCLASSEXA wc = {};
        wc.cbSize = sizeof(wc);
        wc.style = CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS;
        wc.lpfnWndProc = &WindowWin32::window_proc;
        wc.hInstance = use_module_win32();
        wc.hCursor = ::LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));  // the standard arrow
        wc.lpszClassName = get_class_name();
        if (::RegisterClassExA(&wc) == 0)
        {
            _error = get_last_error_text_win32("gadu::WindowWin32::open()");
            return false;
        }
        process.class_registered = true;
    }
    ++process.open_windows;
    return true;
}

void WindowWin32::count_closed()
{
    ProcessState& process = use_process();
    std::lock_guard<std::mutex> guard(process.lock);
    --process.open_windows;
}

std::int32_t WindowWin32::open(void* parent)
{
    if (_handle != nullptr)
    {
        close();
    }
    _error.clear();
    if (!register_class_and_count())
    {
        return -1;
    }
    const std::int32_t width = get_platform_width();
    const std::int32_t height = get_platform_height();
    _parent = static_cast<HWND>(parent);
    const HWND handle = ::CreateWindowExA(0, get_class_name(), kTitle, WS_CHILD | WS_VISIBLE, 0, 0, width, height,
                                          _parent, nullptr, use_module_win32(), nullptr);
    if (handle == nullptr)
    {
        _error = get_last_error_text_win32("gadu::WindowWin32::open()");
        count_closed();
        return -1;
    }
    // The buffer covers the content; a paint larger than that comes in tiles.
    _buffer = RenderingBufferWin32::create(handle, get_content_width(), get_content_height(), use_zoom());
    if (_buffer == nullptr && get_content_width() > 0 && get_content_height() > 0)
    {
        _error = get_last_error_text_win32("gadu::WindowWin32::open()");
        ::DestroyWindow(handle);
        count_closed();
        return -1;
    }
    _handle = handle;
    set_buffer(_buffer.get());
    _text.set_window(handle);
    _menu.set_window(handle);
    ::SetWindowLongPtrA(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    start_timer();
    return 0;
}

void WindowWin32::close()
{
    stop_timer();
    if (_handle != nullptr)
    {
        ::DestroyWindow(_handle);
    }
    // A parent that went first took our window with it: the destroy message
    // has already been handled, and this finds nothing left to do.
    on_platform_destroy();
    use_timers().clear();
}

void WindowWin32::resize()
{
    if (_handle == nullptr)
    {
        return;
    }
    if (is_resizable())
    {
        ::MoveWindow(_handle, 0, 0, get_platform_width(), get_platform_height(), TRUE);
        repaint(Rect{0, 0, get_platform_width(), get_platform_height()});
        return;
    }
    const RECT all = {0, 0, get_platform_width(), get_platform_height()};
    ::InvalidateRect(_handle, &all, FALSE);
}

void WindowWin32::start_timer()
{
    _timer = ::SetTimer(nullptr, 0, kTimerPeriodMs, &WindowWin32::timer_proc);
    if (_timer == 0)
    {
        // The window still works: timers then run on pointer motion and paint.
        _error = get_last_error_text_win32("gadu::WindowWin32::open()");
        return;
    }
    ProcessState& process = use_process();
    std::lock_guard<std::mutex> guard(process.lock);
    process.timers[_timer] = this;
}

void WindowWin32::stop_timer()
{
    if (_timer == 0)
    {
        return;
    }
    ::KillTimer(nullptr, _timer);
    ProcessState& process = use_process();
    std::lock_guard<std::mutex> guard(process.lock);
    process.timers.erase(_timer);
    _timer = 0;
}

void CALLBACK WindowWin32::timer_proc(HWND /*window*/, UINT /*message*/, UINT_PTR id, DWORD /*time*/)
{
    const sys::FpuModeGuard fpu(sys::FpuModeGuard::Denormals::keep);
    WindowWin32* self = nullptr;
    {
        ProcessState& process = use_process();
        std::lock_guard<std::mutex> guard(process.lock);
        const auto found = process.timers.find(id);
        if (found != process.timers.end())
        {
            self = found->second;
        }
    }
    if (self == nullptr)
    {
        return;
    }
    // The system's dispatcher cannot unwind our frames: a failing control
    // loses this run of the timers, not the host.
    try
    {
        self->on_timer_tick();
    }
    catch (...)
    {
    }
}

LRESULT CALLBACK WindowWin32::window_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam)
{
    return enter_window_proc_win32(window, message, wparam, lparam, &WindowWin32::on_platform_message);
}

LRESULT WindowWin32::on_platform_message(HWND window, UINT message, WPARAM wparam, LPARAM lparam)
{
    LRESULT result = 0;
    if (_filter && _filter(window, message, wparam, lparam, result))
    {
        return result;
    }
    return translate(message, wparam, lparam) ? 0 : ::DefWindowProcA(window, message, wparam, lparam);
}

bool WindowWin32::translate(UINT message, WPARAM wparam, LPARAM lparam)
{
    const auto word = static_cast<std::uint32_t>(wparam);
    const auto position = static_cast<std::uint32_t>(lparam);
    const std::int32_t x = mouse_word::get_x(position);
    const std::int32_t y = mouse_word::get_y(position);
    switch (message)
    {
    case WM_MOUSEMOVE:
        on_mouse_move(x, y);
        return true;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
    case WM_MBUTTONDOWN:
    case WM_MBUTTONUP:
        on_mouse_button(x, y, mouse_word::get_buttons(word), mouse_word::get_modifiers(word), 0);
        return true;
    case WM_LBUTTONDBLCLK:
        on_mouse_button(x, y, mouse_word::get_buttons(word), mouse_word::get_modifiers(word), mouse_button::left);
        return true;
    case WM_RBUTTONDBLCLK:
        on_mouse_button(x, y, mouse_word::get_buttons(word), mouse_word::get_modifiers(word), mouse_button::right);
        return true;
    case WM_MBUTTONDBLCLK:
        on_mouse_button(x, y, mouse_word::get_buttons(word), mouse_word::get_modifiers(word),
                        mouse_button::middle);
        return true;
    case WM_MOUSEWHEEL:
    {
        // The wheel reports where the cursor is on the screen.
        POINT at = {x, y};
        ::ScreenToClient(_handle, &at);
        on_mouse_wheel(at.x, at.y, mouse_word::get_wheel_delta(word), mouse_word::get_modifiers(word));
        return true;
    }
    case WM_CAPTURECHANGED:
        // Taking the capture for another control while we hold it is not a
        // loss: the capture logic tells the earlier holder itself.
        if (reinterpret_cast<HWND>(lparam) != _handle)
        {
            on_capture_changed();
        }
        return true;
    case WM_PAINT:
        paint();
        return true;
    case WM_DESTROY:
        on_platform_destroy();
        return true;
    default:
        return false;
    }
}

void WindowWin32::paint()
{
    PAINTSTRUCT ps = {};
    const HDC dc = ::BeginPaint(_handle, &ps);
    if (dc == nullptr)
    {
        return;
    }
    if (_buffer != nullptr)
    {
        _buffer->set_target(dc);
        on_paint(Rect{ps.rcPaint.left, ps.rcPaint.top, ps.rcPaint.right, ps.rcPaint.bottom});
        _buffer->set_target(nullptr);
    }
    fill_outside_content(dc);
    ::EndPaint(_handle, &ps);
}

// A fixed window larger than the content shows the system's face colour
// around it instead of whatever was on the screen before.
void WindowWin32::fill_outside_content(HDC dc) const
{
    RECT client = {};
    ::GetClientRect(_handle, &client);
    const std::int32_t cw = use_zoom().to_platform(get_content_width());
    const std::int32_t ch = use_zoom().to_platform(get_content_height());
    if (client.right <= cw && client.bottom <= ch)
    {
        return;
    }
    const HGDIOBJ old_pen = ::SelectObject(dc, ::GetStockObject(NULL_PEN));
    const HGDIOBJ old_brush = ::SelectObject(dc, ::GetSysColorBrush(COLOR_BTNFACE));
    // Without a pen the rectangle leaves out its right and bottom edge: one
    // more on each side covers the strip exactly.
    if (client.bottom > ch)
    {
        ::Rectangle(dc, 0, ch, client.right + 1, client.bottom + 1);
    }
    if (client.right > cw)
    {
        ::Rectangle(dc, cw, 0, client.right + 1, ch + 1);
    }
    ::SelectObject(dc, old_brush);
    ::SelectObject(dc, old_pen);
}

void WindowWin32::on_platform_destroy()
{
    if (_handle == nullptr)
    {
        return;
    }
    stop_timer();
    // The system may report the lost capture only after our part is gone;
    // the capturing control must hear of it now or it would stay captured
    // into the next open.
    if (use_capture_handler() != nullptr)
    {
        on_capture_changed();
    }
    on_destroyed();
    ::SetWindowLongPtrA(_handle, GWLP_USERDATA, 0);
    _handle = nullptr;
    _text.set_window(nullptr);
    _menu.set_window(nullptr);
    set_buffer(nullptr);
    _buffer.reset();
    count_closed();
}

double WindowWin32::get_time() const
{
    return sys::get_clock_s();
}

void WindowWin32::repaint(const Rect& region)
{
    if (region.is_empty())
    {
        return;
    }
    const RECT r = {region.x1, region.y1, region.x2, region.y2};
    ::InvalidateRect(_handle, &r, FALSE);
}

bool WindowWin32::take_capture()
{
    ::SetCapture(_handle);
    return ::GetCapture() == _handle;
}

bool WindowWin32::release_capture()
{
    ::ReleaseCapture();
    return ::GetCapture() != _handle;
}

void WindowWin32::show_cursor(bool visible)
{
    ::ShowCursor(visible ? TRUE : FALSE);
}

CaptureState::Point WindowWin32::get_cursor_pos() const
{
    POINT cursor = {};
    RECT frame = {};
    if (::GetCursorPos(&cursor) == 0 || ::GetWindowRect(_handle, &frame) == 0)
    {
        return CaptureState::Point{};
    }
    return CaptureState::Point{cursor.x - frame.left, cursor.y - frame.top};
}

void WindowWin32::set_cursor_pos(CaptureState::Point pos)
{
    RECT frame = {};
    if (::GetWindowRect(_handle, &frame) != 0)
    {
        ::SetCursorPos(frame.left + pos.x, frame.top + pos.y);
    }
}

void WindowWin32::give_focus_back()
{
    _text.give_focus_back();
}

std::int32_t WindowWin32::show_menu(const MenuRequest& request)
{
    return _menu.show(request);
}

std::int32_t WindowWin32::stop_menu()
{
    return _menu.stop();
}

std::int32_t WindowWin32::start_text_input(const TextInputRequest& request)
{
    return _text.start(request);
}

std::int32_t WindowWin32::stop_text_input()
{
    return _text.stop();
}

}  // namespace gadu
