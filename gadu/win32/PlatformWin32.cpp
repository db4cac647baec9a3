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

}  // namespace gadu
