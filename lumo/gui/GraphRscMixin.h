#pragma once

#include "gadu/FontInterface.h"
#include "gadu/PicDataInterface.h"
#include "gadu/Picture.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace lumo
{

// The artwork an editor loads from the library's resources: pictures placed
// by their hot spots, in load order and by name, and fonts. The picture data
// stays in the loaded resource; this keeps only the readers over it.
class GraphRscMixin
{
public:
    struct PictureEntry
    {
        const char* name;
        std::int32_t hot_x;
        std::int32_t hot_y;
    };

    virtual ~GraphRscMixin() = default;

    // False at the first picture or font that is missing or malformed; what
    // loaded before it stays.
    bool load_pictures(const PictureEntry* table, int count);
    bool load_fonts(const char* const* names, int count);

    // -1 when no picture of that name was loaded.
    int get_picture_index(const std::string& name) const;
    // Null when unknown. The states of a state picture follow each other, so
    // state n of a picture is at its index plus n.
    const gadu::Picture* use_picture(const std::string& name) const;
    const gadu::Picture* use_picture(int index) const;
    int get_nbr_pictures() const { return static_cast<int>(_pictures.size()); }
    const gadu::FontInterface* use_font(int index) const;
    int get_nbr_fonts() const { return static_cast<int>(_fonts.size()); }

private:
    struct Loaded
    {
        std::unique_ptr<gadu::PicDataInterface> data;
        gadu::Picture picture;
    };

    // Per object, not per process: two editors of one process unload apart,
    // and the same table gives both the same indexes anyway.
    std::vector<Loaded> _pictures;
    std::map<std::string, int> _index_by_name;
    std::vector<std::unique_ptr<gadu::FontInterface>> _fonts;
};

}  // namespace lumo
