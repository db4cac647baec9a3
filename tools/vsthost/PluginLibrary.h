#pragma once

#include "lumo/vst2/Vst2Abi.h"

#include <stdexcept>
#include <string>

namespace vsthost
{

// A file that loads but exports no VST 2 entry point: some other library.
class NotAPluginError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// A loaded plug-in binary (a shared library or a DLL) and its VST 2 entry
// point. The library stays loaded for the life of this object.
class PluginLibrary
{
public:
    // Throws std::runtime_error with the loader's reason when the file cannot
    // be loaded, NotAPluginError when it exports neither "VSTPluginMain" nor
    // "main".
    explicit PluginLibrary(const std::string& path);
    PluginLibrary(const PluginLibrary&) = delete;
    PluginLibrary& operator=(const PluginLibrary&) = delete;
    ~PluginLibrary();

    // How the platform's plug-in files end: ".so", ".dll".
    static const char* get_file_extension();

    lumo::vst2::EntryProc get_entry() const { return _entry; }
    const std::string& get_path() const { return _path; }
    // The folder that holds the plug-in, as hosts answer the directory request.
    const std::string& get_directory() const { return _directory; }
    // The platform's handle of the loaded module.
    void* use_module() const { return _handle; }

private:
    std::string _path;
    std::string _directory;
    void* _handle = nullptr;
    lumo::vst2::EntryProc _entry = nullptr;
};

}  // namespace vsthost
