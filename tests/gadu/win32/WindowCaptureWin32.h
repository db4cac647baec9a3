#pragma once

// Reading back what a window shows, for the Win32 window tests.

#include "gadu/win32/PlatformWin32.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
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

// Writes the pixels as a 24-bit BMP where ZQ_GADU_CAPTURE_DIR asks for it, so
// that a person can look at what the window showed.
inline void save_for_viewing(const char* name, const std::vector<std::uint32_t>& pixels, std::int32_t width,
                      std::int32_t height)
{
    const char* dir = std::getenv("ZQ_GADU_CAPTURE_DIR");
    if (dir == nullptr)
    {
        return;
    }
    const std::string path = std::string(dir) + "/" + name + ".bmp";
    std::FILE* f = std::fopen(path.c_str(), "wb");
    ASSERT_NE(f, nullptr);
    const std::uint32_t row = static_cast<std::uint32_t>((width * 3 + 3) & ~3);
    const std::uint32_t size = 54 + row * static_cast<std::uint32_t>(height);
    std::uint8_t header[54] = {'B', 'M'};
    auto put32 = [&](int at, std::uint32_t v) {
        for (int i = 0; i < 4; ++i)
        {
            header[at + i] = static_cast<std::uint8_t>(v >> (8 * i));
        }
    };
    put32(2, size);
    put32(10, 54);
    put32(14, 40);
    put32(18, static_cast<std::uint32_t>(width));
    put32(22, static_cast<std::uint32_t>(height));
    put32(26, 1u | (24u << 16));
    std::fwrite(header, 1, sizeof(header), f);
    std::vector<std::uint8_t> line(row, 0);
    for (std::int32_t y = height - 1; y >= 0; --y)
    {
        for (std::int32_t x = 0; x < width; ++x)
        {
            const std::uint32_t p = pixels[static_cast<std::size_t>(y * width + x)];
            line[static_cast<std::size_t>(3 * x)] = static_cast<std::uint8_t>(p);
            line[static_cast<std::size_t>(3 * x + 1)] = static_cast<std::uint8_t>(p >> 8);
            line[static_cast<std::size_t>(3 * x + 2)] = static_cast<std::uint8_t>(p >> 16);
        }
        std::fwrite(line.data(), 1, line.size(), f);
    }
    std::fclose(f);
}

}  // namespace gadu_test
