#include "gadu/win32/TextLineEditorWin32.h"

#include "gadu/TextInputRequest.h"
#include "gadu/win32/PlatformWin32.h"
#include "sys/FpuModeGuard.h"

#include <array>

namespace gadu
{

TextLineEditorWin32::~TextLineEditorWin32()
{
    close_field(false);
}

std::int32_t TextLineEditorWin32::start(const TextInputRequest& request)
{
    if (_window == nullptr || is_active())
    {
        return -1;
    }
    const Rect& r = request.get_rect();
    const HWND field =
        ::CreateWindowExA(0, "EDIT", request.get_text().c_str(), WS_CHILD | ES_CENTER | ES_AUTOHSCROLL, r.x1, r.y1,
                          r.x2 - r.x1, r.y2 - r.y1, _window, nullptr, use_module_win32(), nullptr);
    if (field == nullptr)
    {
        _error = get_last_error_text_win32("gadu::TextLineEditorWin32::start()");
        return -1;
    }
    const HFONT font = create_font(r);
    if (font == nullptr)
    {
        _error = get_last_error_text_win32("gadu::TextLineEditorWin32::start()");
        ::DestroyWindow(field);
        return -1;
    }
    _field = field;
    _font = font;
    begin(request);
    ::SetWindowLongPtrA(field, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    _previous_proc = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrA(field, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&TextLineEditorWin32::field_proc)));
    ::SendMessageA(field, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    ::SendMessageA(field, EM_SETSEL, 0, -1);
    ::ShowWindow(field, SW_SHOW);
    _previous_focus = ::SetFocus(field);
    return 0;
}

std::int32_t TextLineEditorWin32::stop()
{
    if (_field == nullptr)
    {
        return -1;
    }
    close_field(false);
    return 0;
}

void TextLineEditorWin32::give_focus_back()
{
    if (_field == nullptr)
    {
        return;
    }
    // Losing the focus finishes the field; should the previous window be
    // gone, the field is finished all the same.
    ::SetFocus(_previous_focus);
    close_field(true);
}

// As tall as the rectangle: the field's text fills the space the control
// gave it. The face is the system's default.
HFONT TextLineEditorWin32::create_font(const Rect& rect) const
{
    const HDC dc = ::GetDC(_window);
    POINT size = {0, rect.y2 - rect.y1};
    if (dc != nullptr)
    {
        ::DPtoLP(dc, &size, 1);
        ::ReleaseDC(_window, dc);
    }
    return ::CreateFontA(size.y, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                         CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_DONTCARE, nullptr);
}

void TextLineEditorWin32::close_field(bool accepted)
{
    // Destroying a field that has the focus makes it lose the focus, which
    // would close it a second time.
    if (_field == nullptr || _closing)
    {
        return;
    }
    _closing = true;
    set_accepted(accepted);
    ::DestroyWindow(_field);
    _closing = false;
}

LRESULT CALLBACK TextLineEditorWin32::field_proc(HWND field, UINT message, WPARAM wparam, LPARAM lparam)
{
    const sys::FpuModeGuard fpu(sys::FpuModeGuard::Denormals::keep);
    auto* self = reinterpret_cast<TextLineEditorWin32*>(::GetWindowLongPtrA(field, GWLP_USERDATA));
    if (self == nullptr)
    {
        return ::DefWindowProcA(field, message, wparam, lparam);
    }
    try
    {
        return self->on_field_message(field, message, wparam, lparam);
    }
    catch (...)
    {
        // The system's dispatcher cannot unwind our frames.
        return 0;
    }
}

LRESULT TextLineEditorWin32::on_field_message(HWND field, UINT message, WPARAM wparam, LPARAM lparam)
{
    const WNDPROC previous = _previous_proc;
    switch (message)
    {
    case WM_KEYDOWN:
        if (wparam == VK_RETURN || wparam == VK_ESCAPE)
        {
            close_field(wparam == VK_RETURN);
            return 0;
        }
        break;
    case WM_CHAR:
        // Their characters would only make the field beep.
        if (wparam == '\r' || wparam == 27)
        {
            return 0;
        }
        break;
    case WM_KILLFOCUS:
    {
        const LRESULT result = ::CallWindowProcA(previous, field, message, wparam, lparam);
        close_field(true);
        return result;
    }
    case WM_DESTROY:
        on_field_destroyed(field);
        return ::CallWindowProcA(previous, field, message, wparam, lparam);
    default:
        break;
    }
    return ::CallWindowProcA(previous, field, message, wparam, lparam);
}

void TextLineEditorWin32::on_field_destroyed(HWND field)
{
    std::array<char, kMaxTextLength + 1> text = {};
    const int n = ::GetWindowTextA(field, text.data(), static_cast<int>(text.size()));
    // From here on the field's own procedure sees its last messages alone.
    ::SetWindowLongPtrA(field, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(_previous_proc));
    ::SetWindowLongPtrA(field, GWLP_USERDATA, 0);
    _field = nullptr;
    // The field no longer paints: its font may go.
    ::DeleteObject(_font);
    _font = nullptr;
    finish(std::string(text.data(), n > 0 ? static_cast<std::size_t>(n) : 0));
}

}  // namespace gadu
