#pragma once

#include "gadu/TextLineEditorInterface.h"

#include <windows.h>

#include <string>

namespace gadu
{

// The one-line text field: a platform edit control over the requested
// rectangle, with a window procedure of its own in front of the control's so
// that Enter, Escape and the loss of the focus end it.
class TextLineEditorWin32 : public TextLineEditorInterface
{
public:
    TextLineEditorWin32() = default;
    ~TextLineEditorWin32() override;

    // The editor window fields are made in; null while it is closed.
    void set_window(HWND window) { _window = window; }

    std::int32_t start(const TextInputRequest& request) override;
    std::int32_t stop() override;

    // Hands the keyboard back to whoever had it before the field opened,
    // which finishes an open field as accepted.
    void give_focus_back();

    HWND use_field() const { return _field; }
    const std::string& get_error_text() const { return _error; }

private:
    static LRESULT CALLBACK field_proc(HWND field, UINT message, WPARAM wparam, LPARAM lparam);

    LRESULT on_field_message(HWND field, UINT message, WPARAM wparam, LPARAM lparam);
    HFONT create_font(const Rect& rect) const;
    void close_field(bool accepted);
    void on_field_destroyed(HWND field);

    HWND _window = nullptr;
    HWND _field = nullptr;
    HFONT _font = nullptr;
    WNDPROC _previous_proc = nullptr;
    HWND _previous_focus = nullptr;
    bool _closing = false;
    std::string _error;
};

}  // namespace gadu
