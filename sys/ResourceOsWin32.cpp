#include "sys/ResourceOs.h"

#include <windows.h>

// The module this code is linked into: the plug-in's DLL, or a test program.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace sys
{

const std::uint8_t* find_os_resource(const char* type, const char* name, std::size_t& size)
{
    const HMODULE module = reinterpret_cast<HMODULE>(&__ImageBase);
    const HRSRC info = ::FindResourceA(module, name, type);
    if (info == nullptr)
    {
        return nullptr;
    }
    const HGLOBAL handle = ::LoadResource(module, info);
    const void* data = handle != nullptr ? ::LockResource(handle) : nullptr;
    if (data == nullptr)
    {
        return nullptr;
    }
    size = ::SizeofResource(module, info);
    return static_cast<const std::uint8_t*>(data);
}

void write_os_debug(const char* text)
{
    ::OutputDebugStringA(text);
}

}  // namespace sys
