#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace artgen
{

// Every APIC resource of the editor, encoded, in the order the resource
// script lists them. Building it reads the bitmap fonts from font_folder
// (Debian's misc-fixed fonts) and depends on nothing else.
class ArtworkSet
{
public:
    struct Resource
    {
        std::string name;  // upper case, as the resource script names it
        std::vector<std::uint8_t> bytes;
    };

    explicit ArtworkSet(const std::string& font_folder);

    const std::vector<Resource>& get_resources() const { return _resources; }
    // The resource of that name (exact spelling); throws when there is none.
    const Resource& get(const std::string& name) const;

private:
    std::vector<Resource> _resources;
};

}  // namespace artgen
