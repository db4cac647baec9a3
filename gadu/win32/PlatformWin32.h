#pragma once

#include "sys/FpuModeGuard.h"

#include <windows.h>

#include <cstdint>
#include <string>

namespace gadu
{

// The module this code is linked into (the plug-in's library, not the host
// that loaded it): window classes are registered for it.
HINSTANCE use_module_win32();

// The operation's name, " : " and the system's text for the calling thread's
// last error, for a failure report.
std::string get_last_error_text_win32(const char* operation);

// A 32-bit section of width x height pixels, rows top to bottom, compatible
// with dc (may be null); bits receives its pixels. Null when refused.
HBITMAP create_top_down_section_win32(HDC dc, std::int32_t width, std::int32_t height, void** bits);

// How every window procedure of the toolkit enters: the toolkit's
// float-to-integer conversions are written for round to nearest, whatever
// mode the host runs its message loop in; the owner is found in the window's
// user data (none yet: the system's default handling); and no exception
// crosses back into the system's dispatcher, which cannot unwind our frames
// (the message is then lost, the host goes on).
template <typename Owner>
LRESULT enter_window_proc_win32(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                LRESULT (Owner::*handle)(HWND, UINT, WPARAM, LPARAM))
{
    const sys::FpuModeGuard fpu(sys::FpuModeGuard::Denormals::keep);
    auto* owner = reinterpret_cast<Owner*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
    if (owner == nullptr)
    {
        return ::DefWindowProcA(window, message, wparam, lparam);
    }
    try
    {
        return (owner->*handle)(window, message, wparam, lparam);
    }
    catch (...)
    {
        return 0;
    }
}

}  // namespace gadu
