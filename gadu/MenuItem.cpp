#include "gadu/MenuItem.h"

#include "gadu/MenuActionInterface.h"

#include <utility>

namespace gadu
{

MenuItem::MenuItem(std::string label, MenuActionInterface* action)
    : MenuNodeInterface(std::move(label)), _id(MenuIdGenerator::next()), _action(action)
{
}

void MenuItem::choose()
{
    if (_action != nullptr)
    {
        _action->on_chosen(*this);
    }
}

}  // namespace gadu
