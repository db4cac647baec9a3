#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace artgen
{

// The two ways the generated files reach a build: a Windows resource script
// for the resource compiler, and for other platforms a C++ source that pulls
// the same files in with the assembler and registers them in a resource table.
struct EmbeddedFile
{
    std::string name;  // resource name
    std::filesystem::path path;
    std::size_t size;
};

std::string make_resource_script(const std::string& type, const std::vector<EmbeddedFile>& files);
std::string make_resource_table(const std::string& type, const std::vector<EmbeddedFile>& files);

}  // namespace artgen
