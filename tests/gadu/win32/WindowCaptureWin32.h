#pragma once

// Reading back what a window shows, for the Win32 window tests.

#include "gadu/win32/PlatformWin32.h"

#include <windows.h>

#include <cstdint>
#include <vector>

namespace gadu_test
{

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

}  // namespace gadu_test
