#include "lumo/vst2/StorePath.h"

#include "lumo/TextCompare.h"

namespace lumo
{
namespace
{

bool is_separator(char c)
{
    return c == '\\' || c == '/';
}

// Drive and directory of a file name, with its trailing separator.
std::string folder_of(const std::string& file)
{
    const std::size_t last = file.find_last_of("\\/");
    if (last != std::string::npos)
    {
        return file.substr(0, last + 1);
    }
    const std::size_t colon = file.find(':');
    return colon != std::string::npos ? file.substr(0, colon + 1) : std::string();
}

std::string base_folder(const std::string& host_directory, const std::string& module_file)
{
    if (host_directory.empty())
    {
        return folder_of(module_file);
    }
    std::string base = host_directory;
    if (base.size() > 4 && equals_ignoring_case(base.c_str() + base.size() - 4, ".dll"))
    {
        base = folder_of(base);
    }
    if (!base.empty() && is_separator(base.back()))
    {
        base.pop_back();
    }
    return base;
}

}  // namespace

std::string make_store_path(const std::string& host_directory, const std::string& module_file,
                            const std::string& registry_path)
{
    const std::string base = base_folder(host_directory, module_file);
    if (base.empty() || registry_path.empty())
    {
        return base;
    }
    return base + "\\" + registry_path;
}

}  // namespace lumo
