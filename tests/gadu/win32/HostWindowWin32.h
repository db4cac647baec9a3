#pragma once

// What the Win32 window tests share: a stand-in for the host's editor window
// and a message pump.

#include "gadu/ControlInterface.h"
#include "gadu/CtrlGroupItem.h"
#include "gadu/ShowObject.h"
#include "gadu/WindowInterface.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace gadu_test
{

// Runs the thread's messages for about this long, so that the system's timers
// and posted messages arrive.
inline void pump(DWORD ms)
{
    const DWORD end = ::GetTickCount() + ms;
    for (;;)
    {
        MSG msg;
        while (::PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
        {
            ::TranslateMessage(&msg);
            ::DispatchMessageA(&msg);
        }
        const auto left = static_cast<LONG>(end - ::GetTickCount());
        if (left <= 0)
        {
            return;
        }
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(left), QS_ALLINPUT);
    }
}

// The host's editor window: a visible top-level window.
inline HWND make_host_window()
{
    static const bool registered = [] {
        WNDCLASSEXA wc = {};
        wc.cbSize = sizeof(wc);
        wc.lpfnWndProc = &::DefWindowProcA;
        wc.hInstance = ::GetModuleHandleA(nullptr);
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
        wc.lpszClassName = "GaduTestHost";
        return ::RegisterClassExA(&wc) != 0;
    }();
    EXPECT_TRUE(registered);
    return ::CreateWindowExA(0, "GaduTestHost", "host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE, 40, 40,
                             300, 240, nullptr, nullptr, ::GetModuleHandleA(nullptr), nullptr);
}

// Whether this module has a window class of that name registered.
inline bool class_exists(const char* name)
{
    WNDCLASSEXA wc = {};
    wc.cbSize = sizeof(wc);
    return ::GetClassInfoExA(::GetModuleHandleA(nullptr), name, &wc) != 0;
}

inline LPARAM at(int x, int y)
{
    return MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y));
}

// The tree of a window with one control in one visible group, set up as an
// editor does it.
inline void set_up_tree(gadu::WindowInterface& window, gadu::CtrlGroupItem& group, gadu::ControlInterface& control,
                        std::int32_t width, std::int32_t height)
{
    group.add_control(control);
    group.set_position(0, 0);
    group.handle_message(gadu::ShowObject(true));
    window.set_content_size(width, height);
    window.set_window_size(width, height);
    window.set_control_root(&group);
}

}  // namespace gadu_test
