#include "gadu/win32/RenderingBufferWin32.h"

#include "gadu/win32/PlatformWin32.h"

#include <algorithm>

namespace gadu
{

RenderingBufferWin32::Section RenderingBufferWin32::create_section(HWND window, std::int32_t width,
                                                                   std::int32_t height)
{
    void* bits = nullptr;
    const HDC dc = ::GetDC(window);
    const HBITMAP section = create_top_down_section_win32(dc, width, height, &bits);
    if (dc != nullptr)
    {
        ::ReleaseDC(window, dc);
    }
    return Section{section, static_cast<std::uint8_t*>(bits)};
}

std::unique_ptr<RenderingBufferWin32> RenderingBufferWin32::create(HWND window, std::int32_t width,
                                                                   std::int32_t height, const Zoom& zoom)
{
    if (width <= 0 || height <= 0)
    {
        return nullptr;
    }
    const Section drawn = create_section(window, width, height);
    if (drawn.handle == nullptr)
    {
        return nullptr;
    }
    Section zoomed;
    if (zoom.get_factor() > 1)
    {
        zoomed = create_section(window, zoom.to_platform(width), zoom.to_platform(height));
        if (zoomed.handle == nullptr)
        {
            ::DeleteObject(drawn.handle);
            return nullptr;
        }
    }
    return std::unique_ptr<RenderingBufferWin32>(new RenderingBufferWin32(window, drawn, zoomed, width, height, zoom));
}

RenderingBufferWin32::RenderingBufferWin32(HWND window, Section drawn, Section zoomed, std::int32_t width,
                                           std::int32_t height, const Zoom& zoom)
    : RenderingBufferInterface(width, height), _window(window), _drawn(drawn), _zoomed(zoomed), _zoom(zoom)
{
}

RenderingBufferWin32::~RenderingBufferWin32()
{
    ::DeleteObject(_drawn.handle);
    if (_zoomed.handle != nullptr)
    {
        ::DeleteObject(_zoomed.handle);
    }
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
    HBITMAP source = _drawn.handle;
    if (_zoomed.handle != nullptr)
    {
        width = std::min(width, _width);
        height = std::min(height, _height);
        // The drawing may still sit in the system's queue for the section.
        ::GdiFlush();
        _zoom.expand(_drawn.pixels, _width * 4, width, height, _zoomed.pixels, _zoom.to_platform(_width) * 4);
        source = _zoomed.handle;
    }
    const HDC memory = ::CreateCompatibleDC(dc);
    if (memory == nullptr)
    {
        return;
    }
    const HGDIOBJ previous = ::SelectObject(memory, source);
    ::BitBlt(dc, _zoom.to_platform(x), _zoom.to_platform(y), _zoom.to_platform(width), _zoom.to_platform(height),
             memory, 0, 0, SRCCOPY);
    ::SelectObject(memory, previous);
    ::DeleteDC(memory);
}

}  // namespace gadu
