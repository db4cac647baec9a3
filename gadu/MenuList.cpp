#include "gadu/MenuList.h"

#include "gadu/MenuItem.h"

namespace gadu
{

MenuItem* MenuList::find_item(std::uint32_t id) const
{
    for (const auto& node : _nodes)
    {
        if (const auto* list = dynamic_cast<const MenuList*>(node.get()))
        {
            if (MenuItem* found = list->find_item(id))
            {
                return found;
            }
        }
    }
    for (const auto& node : _nodes)
    {
        auto* item = dynamic_cast<MenuItem*>(node.get());
        if (item != nullptr && item->get_id() == id)
        {
            return item;
        }
    }
    return nullptr;
}

}  // namespace gadu
