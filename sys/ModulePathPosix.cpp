#include "sys/ModulePath.h"

#include <dlfcn.h>

namespace sys
{

std::string get_module_file_name()
{
    Dl_info info{};
    if (::dladdr(reinterpret_cast<void*>(&get_module_file_name), &info) == 0 || info.dli_fname == nullptr)
    {
        return std::string();
    }
    return info.dli_fname;
}

}  // namespace sys
