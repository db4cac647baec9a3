#pragma once

#include "gadu/MenuList.h"

#include <cstdint>

namespace gadu
{

// The root of a pop-up menu: its entries, and the way to close it while it is
// shown. A control builds one and sends it up in a MenuRequest; the window
// shows it with its platform's menu.
class Menu
{
public:
    Menu() = default;
    virtual ~Menu() = default;
    Menu(const Menu&) = delete;
    Menu& operator=(const Menu&) = delete;

    MenuList& use_root() { return _root; }
    const MenuList& use_root() const { return _root; }

    // Closes what is shown: 0, or -1 when nothing is shown. A menu that is
    // only a model is never shown.
    virtual std::int32_t stop() { return -1; }

private:
    MenuList _root;
};

}  // namespace gadu
