#include "gadu/win32/PlatformWin32.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace gadu
{

HINSTANCE use_module_win32()
{
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

std::string get_last_error_text_win32(const char* operation)
{
    const DWORD code = ::GetLastError();
    char text[512] = {};
    DWORD n = ::FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0, text,
                               sizeof(text), nullptr);
    // The system ends its texts with a line break, which a report does not want.
    while (n > 0 && (text[n - 1] == '\r' || text[n - 1] == '\n' || text[n - 1] == ' '))
    {
        --n;
    }
    std::string result = std::string(operation) + " : ";
    if (n == 0)
    {
        return result + "Error " + std::to_string(code) + ".";
    }
    return result + std::string(text, n);
}

HBITMAP create_top_down_section_win32(HDC dc, std::int32_t width, std::int32_t height, void** bits)
{
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    // Negative: rows top to bottom, as the toolkit draws them.
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    *bits = nullptr;
    const HBITMAP section = ::CreateDIBSection(dc, &info, DIB_RGB_COLORS, bits, nullptr, 0);
    if (section != nullptr && *bits == nullptr)
    {
        ::DeleteObject(section);
        return nullptr;
    }
    return section;
}

}  // namespace gadu
