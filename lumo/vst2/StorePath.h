#pragma once

#include <string>

namespace lumo
{

// Where the plug-in keeps per-product files: the host's plug-in directory (or,
// when the host gives none, the folder of the plug-in's own file) followed by
// "\" and the registry path. host_directory may name the plug-in file itself.
std::string make_store_path(const std::string& host_directory, const std::string& module_file,
                            const std::string& registry_path);

}  // namespace lumo
