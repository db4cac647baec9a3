#include "WindowProbe.h"

#include <windows.h>

namespace vsthost
{

namespace
{

// Pixels come from the window's device context as they are on screen; every
// child has painted by the time the caller asks.
Image copy_client(HWND window, int width, int height)
{
    Image image;
    HDC window_dc = GetDC(window);
    HDC memory_dc = CreateCompatibleDC(window_dc);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // top-down rows
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    HBITMAP bitmap = CreateDIBSection(window_dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (bitmap != nullptr && memory_dc != nullptr)
    {
        HGDIOBJ old = SelectObject(memory_dc, bitmap);
        if (BitBlt(memory_dc, 0, 0, width, height, window_dc, 0, 0, SRCCOPY))
        {
            GdiFlush();
            image = Image(width, height);
            const auto* bgrx = static_cast<const std::uint8_t*>(bits);
            for (std::size_t i = 0; i < image.rgba.size(); i += 4)
            {
                image.rgba[i] = bgrx[i + 2];
                image.rgba[i + 1] = bgrx[i + 1];
                image.rgba[i + 2] = bgrx[i];
                image.rgba[i + 3] = 255;
            }
        }
        SelectObject(memory_dc, old);
    }
    if (bitmap != nullptr)
    {
        DeleteObject(bitmap);
    }
    if (memory_dc != nullptr)
    {
        DeleteDC(memory_dc);
    }
    ReleaseDC(window, window_dc);
    return image;
}

// Where the system keeps no per-process counts (it answers 0 and sets an
// error), live objects are found by probing every 16-bit handle index: such
// systems take a handle without its generation bits as the current object at
// that index. Windows and menus are the USER objects editors make.
constexpr UINT_PTR first_handle = 0x20;
constexpr UINT_PTR handle_limit = 0x10000;

long probe_gdi_objects()
{
    long count = 0;
    for (UINT_PTR h = first_handle; h < handle_limit; ++h)
    {
        count += GetObjectType(reinterpret_cast<HGDIOBJ>(h)) != 0 ? 1 : 0;
    }
    return count;
}

long probe_user_objects()
{
    const DWORD process = GetCurrentProcessId();
    long count = 0;
    for (UINT_PTR h = first_handle; h < handle_limit; h += 2)
    {
        auto* window = reinterpret_cast<HWND>(h);
        DWORD owner = 0;
        if (IsWindow(window) && GetWindowThreadProcessId(window, &owner) != 0 && owner == process)
        {
            ++count;
        }
        count += IsMenu(reinterpret_cast<HMENU>(h)) ? 1 : 0;
    }
    return count;
}

}  // namespace

Image WindowProbe::capture(void* window)
{
    auto* hwnd = static_cast<HWND>(window);
    RECT client;
    if (hwnd == nullptr || !GetClientRect(hwnd, &client) || client.right <= 0 || client.bottom <= 0)
    {
        return {};
    }
    RedrawWindow(hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    return copy_client(hwnd, client.right, client.bottom);
}

WindowProbe::Counts WindowProbe::get_counts()
{
    Counts counts;
    HANDLE process = GetCurrentProcess();
    SetLastError(0);
    const DWORD gdi = GetGuiResources(process, GR_GDIOBJECTS);
    if (gdi != 0 || GetLastError() == 0)
    {
        counts.gdi = static_cast<long>(gdi);
        counts.user = static_cast<long>(GetGuiResources(process, GR_USEROBJECTS));
        return counts;
    }
    counts.gdi = probe_gdi_objects();
    counts.user = probe_user_objects();
    counts.probed = true;
    return counts;
}

WindowProbe::WindowClass WindowProbe::get_child_class(void* window)
{
    WindowClass result;
    HWND child = GetWindow(static_cast<HWND>(window), GW_CHILD);
    char name[256] = {};
    if (child != nullptr && GetClassNameA(child, name, sizeof name) > 0)
    {
        result.name = name;
        result.module = reinterpret_cast<void*>(GetClassLongPtrA(child, GCLP_HMODULE));
    }
    return result;
}

bool WindowProbe::has_window_classes()
{
    return true;
}

bool WindowProbe::is_registered(const WindowClass& window_class)
{
    WNDCLASSEXA info{};
    info.cbSize = sizeof info;
    return !window_class.name.empty() &&
           GetClassInfoExA(static_cast<HINSTANCE>(window_class.module), window_class.name.c_str(), &info) != 0;
}

}  // namespace vsthost
