#pragma once

#include <string>

namespace vsthost
{

// The folder part of a file path, without its last separator; "." for a bare
// file name. Both separators count, as Windows accepts both.
inline std::string get_folder(const std::string& path)
{
    const auto slash = path.find_last_of("\\/");
    if (slash == std::string::npos)
    {
        return ".";
    }
    return slash == 0 ? path.substr(0, 1) : path.substr(0, slash);
}

}  // namespace vsthost
