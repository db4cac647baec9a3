#include "sys/ModulePath.h"

#include <windows.h>

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace sys
{

std::string get_module_file_name()
{
    char path[MAX_PATH + 1] = {};
    const DWORD n = ::GetModuleFileNameA(reinterpret_cast<HMODULE>(&__ImageBase), path, MAX_PATH);
    return std::string(path, n <= MAX_PATH ? n : 0);
}

}  // namespace sys
