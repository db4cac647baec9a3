#pragma once

#include "gadu/MessageInterface.h"

#include <cstdint>

namespace gadu
{

class Menu;

// Pops a menu up at the cursor moved by the offset (screen pixels).
class MenuRequest : public MessageUp
{
public:
    MenuRequest(Menu* menu, std::int32_t offset_x, std::int32_t offset_y)
        : _menu(menu), _offset_x(offset_x), _offset_y(offset_y)
    {
    }

    Menu* use_menu() const { return _menu; }
    std::int32_t get_offset_x() const { return _offset_x; }
    std::int32_t get_offset_y() const { return _offset_y; }

private:
    Menu* _menu;
    std::int32_t _offset_x;
    std::int32_t _offset_y;
};

// Closes the open menu.
class MenuStop : public MessageUp
{
};

}  // namespace gadu
