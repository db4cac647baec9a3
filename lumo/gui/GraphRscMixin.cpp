#include "lumo/gui/GraphRscMixin.h"

#include "gadu/FontFactory.h"
#include "gadu/PicDataFactory.h"

namespace lumo
{

bool GraphRscMixin::load_pictures(const PictureEntry* table, int count)
{
    for (int i = 0; i < count; ++i)
    {
        const PictureEntry& entry = table[i];
        Loaded loaded{gadu::PicDataFactory::use_instance().create(entry.name), gadu::Picture()};
        if (loaded.data == nullptr)
        {
            return false;
        }
        loaded.picture.set_picture(loaded.data.get());
        loaded.picture.set_hot_spot(entry.hot_x, entry.hot_y);
        _index_by_name[entry.name] = static_cast<int>(_pictures.size());
        _pictures.push_back(std::move(loaded));
    }
    return true;
}

bool GraphRscMixin::load_fonts(const char* const* names, int count)
{
    for (int i = 0; i < count; ++i)
    {
        std::unique_ptr<gadu::FontInterface> font = gadu::FontFactory::use_instance().create(names[i]);
        if (font == nullptr)
        {
            return false;
        }
        _fonts.push_back(std::move(font));
    }
    return true;
}

int GraphRscMixin::get_picture_index(const std::string& name) const
{
    const auto found = _index_by_name.find(name);
    return found != _index_by_name.end() ? found->second : -1;
}

const gadu::Picture* GraphRscMixin::use_picture(const std::string& name) const
{
    return use_picture(get_picture_index(name));
}

const gadu::Picture* GraphRscMixin::use_picture(int index) const
{
    return index >= 0 && index < get_nbr_pictures() ? &_pictures[static_cast<std::size_t>(index)].picture : nullptr;
}

const gadu::FontInterface* GraphRscMixin::use_font(int index) const
{
    return index >= 0 && index < get_nbr_fonts() ? _fonts[static_cast<std::size_t>(index)].get() : nullptr;
}

}  // namespace lumo
