#include "PluginLibrary.h"

#include "FilePath.h"

#include <windows.h>

#include <stdexcept>

namespace vsthost
{

namespace
{

std::string describe_last_error()
{
    const DWORD code = GetLastError();
    char text[512] = {};
    FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0, text,
                   sizeof text, nullptr);
    // The system's text ends in a line break, which would split the reason off its line.
    std::string reason = text;
    reason.erase(reason.find_last_not_of(" \r\n") + 1);
    return "error " + std::to_string(code) + (reason.empty() ? std::string() : ": " + reason);
}

}  // namespace

PluginLibrary::PluginLibrary(const std::string& path) : _path(path), _directory(get_folder(path))
{
    HMODULE module = LoadLibraryA(path.c_str());
    if (module == nullptr)
    {
        throw std::runtime_error("cannot load " + path + ": " + describe_last_error());
    }
    _handle = module;
    for (const char* name : {"VSTPluginMain", "main"})
    {
        if (FARPROC symbol = GetProcAddress(module, name))
        {
            _entry = reinterpret_cast<lumo::vst2::EntryProc>(reinterpret_cast<void*>(symbol));
            return;
        }
    }
    FreeLibrary(module);
    throw NotAPluginError(path + " exports no VST 2 entry point (VSTPluginMain or main)");
}

PluginLibrary::~PluginLibrary()
{
    FreeLibrary(static_cast<HMODULE>(_handle));
}

const char* PluginLibrary::get_file_extension()
{
    return ".dll";
}

}  // namespace vsthost
