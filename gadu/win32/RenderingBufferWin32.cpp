#include "gadu/win32/RenderingBufferWin32.h"

namespace gadu
{

std::unique_ptr<RenderingBufferWin32> RenderingBufferWin32::create(HWND window, std::int32_t width,
                                                                   std::int32_t height)
{
    if (width <= 0 || height <= 0)
    {
        return nullptr;
    }
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    // Negative: rows top to bottom, as the toolkit draws them.
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    const HDC dc = ::GetDC(window);
    const HBITMAP section = ::CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (dc != nullptr)
    {
        ::ReleaseDC(window, dc);
    }
    if (section == nullptr || bits == nullptr)
    {
        if (section != nullptr)
        {
            ::DeleteObject(section);
        }
        return nullptr;
    }
    return std::unique_ptr<RenderingBufferWin32>(
        new RenderingBufferWin32(window, section, static_cast<std::uint8_t*>(bits), width, height));
}

RenderingBufferWin32::RenderingBufferWin32(HWND window, HBITMAP section, std::uint8_t* pixels, std::int32_t width,
                                           std::int32_t height)
    : RenderingBufferInterface(width, height), _window(window), _section(section), _pixels(pixels)
{
}

RenderingBufferWin32::~RenderingBufferWin32()
{
    ::DeleteObject(_section);
}

void RenderingBufferWin32::blit(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height)
{
    if (_target != nullptr)
    {
        blit_to(_target, x, y, width, height);
        return;
    }
    const HDC dc = ::GetDC(_window);
    if (dc != nullptr)
    {
        blit_to(dc, x, y, width, height);
        ::ReleaseDC(_window, dc);
    }
}

void RenderingBufferWin32::blit_to(HDC dc, std::int32_t x, std::int32_t y, std::int32_t width,
                                   std::int32_t height) const
{
    const HDC memory = ::CreateCompatibleDC(dc);
    if (memory == nullptr)
    {
        return;
    }
    const HGDIOBJ previous = ::SelectObject(memory, _section);
    ::BitBlt(dc, x, y, width, height, memory, 0, 0, SRCCOPY);
    ::SelectObject(memory, previous);
    ::DeleteDC(memory);
}

}  // namespace gadu
