#include "PluginFinder.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>

namespace vsthost
{

namespace
{

namespace fs = std::filesystem;

bool has_extension(const fs::path& file, const std::string& extension)
{
    const std::string found = file.extension().string();
    return std::equal(found.begin(), found.end(), extension.begin(), extension.end(), [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
    });
}

// Folders that cannot be read and links that lead nowhere are passed over:
// a search must not stop at one bad entry.
std::vector<std::string> search(const fs::path& folder, const std::string& extension)
{
    std::vector<std::string> files;
    std::error_code error;
    for (fs::recursive_directory_iterator it(folder, fs::directory_options::skip_permission_denied, error), end;
         !error && it != end; it.increment(error))
    {
        std::error_code ignored;
        if (it->is_regular_file(ignored) && has_extension(it->path(), extension))
        {
            files.push_back(it->path().string());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace

std::vector<FoundPlugin> PluginFinder::find(const std::vector<std::string>& paths, const std::string& extension)
{
    std::vector<FoundPlugin> found;
    for (const std::string& path : paths)
    {
        std::error_code error;
        if (!fs::is_directory(path, error))
        {
            // A file that is not there fails to load, and says so.
            found.push_back({path, true});
            continue;
        }
        for (std::string& file : search(path, extension))
        {
            found.push_back({std::move(file), false});
        }
    }
    return found;
}

}  // namespace vsthost
