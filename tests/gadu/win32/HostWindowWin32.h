#pragma once

// What the Win32 window tests share: a stand-in for the host's editor window,
// a message pump, reading back what a window shows, and the scene's window
// open in the host's.

#include "gadu/win32/PlatformWin32.h"
#include "gadu/win32/WindowWin32.h"

#include "tests/gadu/WindowScene.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <cstdint>
#include <utility>
#include <vector>

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

// ShowCursor only tells the display count by changing it: change it and back.
inline int cursor_count()
{
    const int count = ::ShowCursor(TRUE) - 1;
    ::ShowCursor(FALSE);
    return count;
}

inline LPARAM at(int x, int y)
{
    return MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y));
}

// The window's pixels as the screen shows them, 0xRRGGBB, rows top down.
inline std::vector<std::uint32_t> capture(HWND window, std::int32_t width, std::int32_t height)
{
    void* bits = nullptr;
    const HDC screen = ::GetDC(window);
    const HBITMAP section = gadu::create_top_down_section_win32(screen, width, height, &bits);
    const HDC memory = ::CreateCompatibleDC(screen);
    const HGDIOBJ old = ::SelectObject(memory, section);
    ::BitBlt(memory, 0, 0, width, height, screen, 0, 0, SRCCOPY);
    ::GdiFlush();
    std::vector<std::uint32_t> pixels(static_cast<const std::uint32_t*>(bits),
                                      static_cast<const std::uint32_t*>(bits) + width * height);
    for (std::uint32_t& p : pixels)
    {
        p &= 0xFFFFFFu;
    }
    ::SelectObject(memory, old);
    ::DeleteDC(memory);
    ::DeleteObject(section);
    ::ReleaseDC(window, screen);
    return pixels;
}

// The large scene in a window of its own, open in one host window that all
// tests of a suite share (making a top-level window costs wine a while).
class SceneWindowWin32Test : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { parent = make_host_window(); }
    static void TearDownTestSuite() { ::DestroyWindow(parent); }

    void SetUp() override
    {
        ASSERT_NE(parent, nullptr);
        scene.attach(window);
        reopen();
    }

    void TearDown() override { window.close(); }

    void reopen()
    {
        window.close();
        ASSERT_EQ(window.open(parent), 0) << window.get_error_text();
        hwnd = window.use_handle();
        ASSERT_NE(hwnd, nullptr);
        ::UpdateWindow(hwnd);
        scene.log.clear();
    }

    // Where a window pixel lies on the screen.
    POINT on_screen(std::int32_t x, std::int32_t y) const
    {
        RECT frame = {};
        ::GetWindowRect(hwnd, &frame);
        return POINT{frame.left + x, frame.top + y};
    }

    std::pair<LONG, LONG> client_size() const
    {
        RECT client = {};
        ::GetClientRect(hwnd, &client);
        return {client.right, client.bottom};
    }

    LRESULT send(UINT message, WPARAM word, std::int32_t x, std::int32_t y) const
    {
        return ::SendMessageA(hwnd, message, word, at(x, y));
    }

    static inline HWND parent = nullptr;
    WindowScene scene;
    gadu::WindowWin32 window;
    HWND hwnd = nullptr;
};

}  // namespace gadu_test
