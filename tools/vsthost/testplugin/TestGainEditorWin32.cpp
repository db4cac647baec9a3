#include "TestGainEditor.h"

#include "TestGain.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace testgain
{

namespace
{

// Where things are drawn, in the editor's pixels.
constexpr RECT gain_bar{10, 20, 230, 60};
constexpr RECT phase_lamp{10, 75, 60, 105};
constexpr COLORREF background_colour = RGB(32, 32, 40);
constexpr COLORREF bar_back_colour = RGB(64, 64, 64);
constexpr COLORREF bar_colour = RGB(60, 160, 230);
constexpr COLORREF lamp_on_colour = RGB(220, 60, 40);
constexpr COLORREF lamp_off_colour = RGB(90, 90, 90);

#ifdef TESTGAIN_LEAKY_EDITOR
// The leaky variant proves a host's leak checks: it loses a brush on every
// painting, hides its window instead of destroying it, and never unregisters
// its class.
constexpr bool leaky = true;
#else
constexpr bool leaky = false;
#endif

// Hosts open and close editors on their one GUI thread, so the count of open
// windows needs no synchronisation.
int open_windows = 0;
char class_name[64] = {};

HINSTANCE use_module()
{
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

LRESULT CALLBACK window_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam)
{
    auto* editor = reinterpret_cast<TestGainEditor*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (message == WM_NCCREATE)
    {
        editor = static_cast<TestGainEditor*>(reinterpret_cast<CREATESTRUCTA*>(lparam)->lpCreateParams);
        SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(editor));
    }
    if (editor != nullptr && editor->handle(message, wparam, lparam))
    {
        return 0;
    }
    return DefWindowProcA(window, message, wparam, lparam);
}

// The class is named after the module's address: two copies of this library
// loaded from different files must not share, and unregister, one class.
bool register_class()
{
    if (open_windows > 0)
    {
        return true;
    }
    std::snprintf(class_name, sizeof class_name, "TestGainEditor%p", static_cast<void*>(use_module()));
    WNDCLASSA wc{};
    wc.style = CS_DBLCLKS;
    wc.lpfnWndProc = &window_proc;
    wc.hInstance = use_module();
    wc.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    wc.lpszClassName = class_name;
    return RegisterClassA(&wc) != 0 || (leaky && GetLastError() == ERROR_CLASS_ALREADY_EXISTS);
}

void fill(HDC dc, const RECT& r, COLORREF colour)
{
    HBRUSH brush = CreateSolidBrush(colour);
    FillRect(dc, &r, brush);
    if (!leaky)
    {
        DeleteObject(brush);
    }
}

bool contains(const RECT& r, int x, int y)
{
    return x >= r.left && x < r.right && y >= r.top && y < r.bottom;
}

float gain_at(int x)
{
    const float v = static_cast<float>(x - gain_bar.left) / static_cast<float>(gain_bar.right - gain_bar.left);
    return std::clamp(v, 0.0f, 1.0f);
}

}  // namespace

TestGainEditor::~TestGainEditor()
{
    close();
}

bool TestGainEditor::is_available()
{
    return true;
}

bool TestGainEditor::open(void* parent)
{
    close();
    if (parent == nullptr || !register_class())
    {
        return false;
    }
    HWND window = CreateWindowExA(0, class_name, "TestGain", WS_CHILD | WS_VISIBLE, 0, 0, width,
                                  _tall ? tall_height : height, static_cast<HWND>(parent), nullptr, use_module(),
                                  this);
    if (window == nullptr)
    {
        if (open_windows == 0)
        {
            UnregisterClassA(class_name, use_module());
        }
        return false;
    }
    ++open_windows;
    _window = window;
    return true;
}

void TestGainEditor::close()
{
    if (_window == nullptr)
    {
        return;
    }
    end_drag();
    if (leaky)
    {
        ShowWindow(static_cast<HWND>(_window), SW_HIDE);
    }
    else
    {
        DestroyWindow(static_cast<HWND>(_window));
    }
    _window = nullptr;
    if (--open_windows == 0 && !leaky)
    {
        UnregisterClassA(class_name, use_module());
    }
}

void TestGainEditor::idle()
{
    if (_window != nullptr && (_plugin.get_param(0) != _drawn_gain || _plugin.get_param(1) != _drawn_phase))
    {
        InvalidateRect(static_cast<HWND>(_window), nullptr, FALSE);
    }
}

bool TestGainEditor::handle(unsigned message, std::uintptr_t wparam, std::intptr_t lparam)
{
    const int x = static_cast<short>(LOWORD(lparam));
    const int y = static_cast<short>(HIWORD(lparam));
    switch (message)
    {
    case WM_PAINT:
        paint();
        return true;
    case WM_ERASEBKGND:
        return true;  // the painting covers every pixel
    case WM_LBUTTONDOWN:
        press(x, y);
        return true;
    case WM_MOUSEMOVE:
        if (_dragging && (wparam & MK_LBUTTON) != 0)
        {
            drag_to(x);
        }
        return true;
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED:
        end_drag();
        return true;
    case WM_LBUTTONDBLCLK:
        if (contains(gain_bar, x, y))
        {
            _plugin.begin_edit(0);
            _plugin.edit_param(0, TestGain::get_default(0));
            _plugin.end_edit(0);
            idle();
        }
        return true;
    case WM_RBUTTONDOWN:
        toggle_size();
        return true;
    default:
        return false;
    }
}

void TestGainEditor::paint()
{
    auto* window = static_cast<HWND>(_window);
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(window, &ps);
    _drawn_gain = _plugin.get_param(0);
    _drawn_phase = _plugin.get_param(1);
    RECT all;
    GetClientRect(window, &all);
    fill(dc, all, background_colour);
    fill(dc, gain_bar, bar_back_colour);
    RECT bar = gain_bar;
    bar.right = gain_bar.left + static_cast<LONG>(_drawn_gain * static_cast<float>(gain_bar.right - gain_bar.left) + 0.5f);
    fill(dc, bar, bar_colour);
    fill(dc, phase_lamp, _drawn_phase >= 0.5f ? lamp_on_colour : lamp_off_colour);
    EndPaint(window, &ps);
}

void TestGainEditor::press(int x, int y)
{
    if (contains(phase_lamp, x, y))
    {
        _plugin.begin_edit(1);
        _plugin.edit_param(1, _plugin.get_param(1) >= 0.5f ? 0.0f : 1.0f);
        _plugin.end_edit(1);
        idle();
    }
    else if (contains(gain_bar, x, y))
    {
        SetCapture(static_cast<HWND>(_window));
        _dragging = true;
        _plugin.begin_edit(0);
        drag_to(x);
    }
}

void TestGainEditor::drag_to(int x)
{
    _plugin.edit_param(0, gain_at(x));
    idle();
}

void TestGainEditor::end_drag()
{
    // The flag goes first: releasing the capture sends WM_CAPTURECHANGED,
    // which comes back here.
    if (_dragging)
    {
        _dragging = false;
        ReleaseCapture();
        _plugin.end_edit(0);
    }
}

void TestGainEditor::toggle_size()
{
    const bool tall = !_tall;
    if (_plugin.resize_editor(width, tall ? tall_height : height))
    {
        _tall = tall;
        SetWindowPos(static_cast<HWND>(_window), nullptr, 0, 0, width, tall ? tall_height : height,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

}  // namespace testgain
