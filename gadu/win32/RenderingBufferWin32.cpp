#include "gadu/win32/RenderingBufferWin32.h"

#include "gadu/win32/PlatformWin32.h"

namespace gadu
{

std::unique_ptr<RenderingBufferWin32> RenderingBufferWin32::create(HWND window, std::int32_t width,
                                                                   std::int32_t height)
{
    if (width <= 0 || height <= 0)
    {
        return nullptr;
    }
    void* bits = nullptr;
    const HDC dc = ::GetDC(window);
    const HBITMAP section = create_top_down_section_win32(dc, width, height, &bits);
    if (dc != nullptr)
    {
        ::ReleaseDC(window, dc);
    }
    if (section == nullptr)
    {
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
