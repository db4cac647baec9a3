#pragma once

#include <string>
#include <vector>

namespace vsthost
{

// A plug-in file to validate.
struct FoundPlugin
{
    std::string path;
    // Named on the command line, rather than found in a folder that may also
    // hold other libraries.
    bool named = false;
};

// The plug-ins that "vsthost validate" was given: files as they were named,
// and folders searched through, subfolders included, for files with the
// platform's plug-in extension (letter case ignored), in name order.
class PluginFinder
{
public:
    static std::vector<FoundPlugin> find(const std::vector<std::string>& paths, const std::string& extension);
};

}  // namespace vsthost
