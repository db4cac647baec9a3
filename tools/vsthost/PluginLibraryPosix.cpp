#include "PluginLibrary.h"

#include "FilePath.h"

#include <dlfcn.h>

#include <stdexcept>

namespace vsthost
{

PluginLibrary::PluginLibrary(const std::string& path) : _path(path), _directory(get_folder(path))
{
    // dlopen looks in the library path for names without a slash; a host means a file.
    const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
    _handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (_handle == nullptr)
    {
        const char* why = dlerror();
        throw std::runtime_error("cannot load " + path + ": " + (why != nullptr ? why : "unknown reason"));
    }
    for (const char* name : {"VSTPluginMain", "main"})
    {
        if (void* symbol = dlsym(_handle, name))
        {
            _entry = reinterpret_cast<lumo::vst2::EntryProc>(symbol);
            return;
        }
    }
    dlclose(_handle);
    throw NotAPluginError(path + " exports no VST 2 entry point (VSTPluginMain or main)");
}

PluginLibrary::~PluginLibrary()
{
    dlclose(_handle);
}

const char* PluginLibrary::get_file_extension()
{
    return ".so";
}

}  // namespace vsthost
