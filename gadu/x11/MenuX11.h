#pragma once

#include "gadu/Menu.h"
#include "gadu/PopupMenuLayout.h"

#include <X11/Xlib.h>

#include <cstdint>
#include <vector>

namespace gadu
{

class ConnectionX11;
class MenuRequest;

// A pop-up menu on X11, which has no menus of its own: the toolkit draws the
// entries of the menu model in a window of its own above everything (one the
// window manager leaves alone), at the cursor. While it is shown it holds the
// pointer and the keyboard: the arrows move between the entries (Right opens
// a submenu in place, Left or Escape goes back out), Return or a click
// chooses, Escape or a click outside closes. A chosen item's action runs once
// the menu has gone. Unlike the Windows menu it does not wait for the user:
// show() answers at once and the editor's idle calls deliver the user's input.
class MenuX11
{
public:
    MenuX11() = default;
    ~MenuX11();
    MenuX11(const MenuX11&) = delete;
    MenuX11& operator=(const MenuX11&) = delete;

    // The editor window's connection and window; null while it is closed.
    void set_window(ConnectionX11* connection, Window editor);

    // 0 when shown, -1 when there is no menu, no window or a menu is shown already.
    std::int32_t show(const MenuRequest& request);
    // 0, or -1 when nothing is shown.
    std::int32_t stop();
    bool is_shown() const { return _handle != 0; }
    // Whether the event was the menu's; it has handled it then.
    bool handle_event(const XEvent& event);

    Window use_handle() const { return _handle; }
    // The shown level's rows and the highlighted row (-1 for none).
    const PopupMenuLayout& use_layout() const { return _layout; }
    int get_selected() const { return _selected; }

private:
    void enter_level(const MenuList& list);
    void leave_level();
    void activate(int row);
    void on_key(XKeyEvent event);
    void select(int row);
    void draw();
    void draw_row(const PopupMenuLayout::Row& row, bool selected);

    ConnectionX11* _connection = nullptr;
    Window _editor = 0;
    Window _handle = 0;
    GC _gc = nullptr;
    XFontStruct* _font = nullptr;
    Menu* _shown = nullptr;
    std::vector<const MenuList*> _levels;
    PopupMenuLayout _layout;
    int _selected = -1;
};

}  // namespace gadu
