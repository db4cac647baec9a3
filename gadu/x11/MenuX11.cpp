#include "gadu/x11/MenuX11.h"

#include "gadu/MenuItem.h"
#include "gadu/MenuRequest.h"
#include "gadu/Rect.h"
#include "gadu/x11/ConnectionX11.h"

#include <X11/Xutil.h>
#include <X11/keysym.h>

#include <algorithm>

namespace gadu
{

namespace
{

constexpr unsigned long kFace = 0xF0F0F0;
constexpr unsigned long kFrame = 0x808080;
constexpr unsigned long kText = 0x000000;
constexpr unsigned long kGrayed = 0x8C8C8C;
constexpr unsigned long kHighlight = 0x3066C8;
constexpr unsigned long kHighlightText = 0xFFFFFF;
constexpr unsigned kPointerEvents = ButtonPressMask | ButtonReleaseMask | PointerMotionMask;

}  // namespace

MenuX11::~MenuX11()
{
    stop();
}

void MenuX11::set_window(ConnectionX11* connection, Window editor)
{
    if (connection == nullptr)
    {
        stop();
    }
    _connection = connection;
    _editor = editor;
}

std::int32_t MenuX11::show(const MenuRequest& request)
{
    if (request.use_menu() == nullptr || _connection == nullptr || !_connection->is_usable() || is_shown())
    {
        return -1;
    }
    Display* display = _connection->use_display();
    Window root = 0;
    Window child = 0;
    int x = 0;
    int y = 0;
    int wx = 0;
    int wy = 0;
    unsigned state = 0;
    XQueryPointer(display, _editor, &root, &child, &x, &y, &wx, &wy, &state);
    // The server's default font is always there; the menu needs no other.
    _font = XQueryFont(display, XGContextFromGC(DefaultGC(display, DefaultScreen(display))));
    if (_font == nullptr)
    {
        return -1;
    }
    XSetWindowAttributes attributes{};
    attributes.override_redirect = True;
    attributes.save_under = True;
    attributes.background_pixel = kFace;
    attributes.border_pixel = kFrame;
    attributes.event_mask = ExposureMask | KeyPressMask | kPointerEvents;
    _handle = XCreateWindow(display, root, x + request.get_offset_x(), y + request.get_offset_y(), 1, 1, 1,
                            CopyFromParent, InputOutput, CopyFromParent,
                            CWOverrideRedirect | CWSaveUnder | CWBackPixel | CWBorderPixel | CWEventMask, &attributes);
    // A new GC draws text in the server's default font, the one measured above.
    _gc = XCreateGC(display, _handle, 0, nullptr);
    _shown = request.use_menu();
    enter_level(_shown->use_root());
    XMapRaised(display, _handle);
    // Grabbing needs the window on screen.
    XSync(display, False);
    XGrabPointer(display, _handle, True, kPointerEvents, GrabModeAsync, GrabModeAsync, None, None, CurrentTime);
    XGrabKeyboard(display, _handle, True, GrabModeAsync, GrabModeAsync, CurrentTime);
    return 0;
}

std::int32_t MenuX11::stop()
{
    if (!is_shown())
    {
        return -1;
    }
    Display* display = _connection->use_display();
    if (_connection->is_usable())
    {
        XUngrabPointer(display, CurrentTime);
        XUngrabKeyboard(display, CurrentTime);
        XDestroyWindow(display, _handle);
    }
    // Also on a broken connection: the GC's memory on our side must go.
    XFreeGC(display, _gc);
    // Only the client's copy of the font's description; the font is the server's.
    XFreeFontInfo(nullptr, _font, 1);
    _font = nullptr;
    _gc = nullptr;
    _handle = 0;
    _shown = nullptr;
    _levels.clear();
    _selected = -1;
    return 0;
}

void MenuX11::enter_level(const MenuList& list)
{
    _levels.push_back(&list);
    const std::int32_t line = _font->ascent + _font->descent;
    _layout.build(list, line, [this](const std::string& text) {
        return XTextWidth(_font, text.c_str(), static_cast<int>(text.size()));
    });
    _selected = -1;
    Display* display = _connection->use_display();
    // The whole menu stays on the screen.
    XWindowAttributes where{};
    XGetWindowAttributes(display, _handle, &where);
    const Screen* screen = where.screen;
    const int x = std::max(0, std::min(where.x, WidthOfScreen(screen) - _layout.get_width() - 2));
    const int y = std::max(0, std::min(where.y, HeightOfScreen(screen) - _layout.get_height() - 2));
    XMoveResizeWindow(display, _handle, x, y, static_cast<unsigned>(std::max(_layout.get_width(), 1)),
                      static_cast<unsigned>(std::max(_layout.get_height(), 1)));
    XClearArea(display, _handle, 0, 0, 0, 0, True);
}

void MenuX11::leave_level()
{
    if (_levels.size() <= 1)
    {
        stop();
        return;
    }
    _levels.pop_back();
    const MenuList* up = _levels.back();
    _levels.pop_back();
    enter_level(*up);
}

bool MenuX11::handle_event(const XEvent& event)
{
    if (!is_shown() || event.xany.window != _handle)
    {
        return false;
    }
    switch (event.type)
    {
    case Expose:
        if (event.xexpose.count == 0)
        {
            draw();
        }
        break;
    case MotionNotify:
        select(_layout.row_at(event.xmotion.x, event.xmotion.y));
        break;
    case ButtonPress:
        // The pointer is ours while the menu shows: a press anywhere else
        // lands here too, outside the menu's area, and closes it.
        if (!Rect{0, 0, _layout.get_width(), _layout.get_height()}.contains(event.xbutton.x, event.xbutton.y))
        {
            stop();
        }
        break;
    case ButtonRelease:
    {
        // Also the release of the button that opened the menu: it chooses
        // only over an entry, as a click does.
        const int row = _layout.row_at(event.xbutton.x, event.xbutton.y);
        if (_layout.is_choosable(row))
        {
            activate(row);
        }
        break;
    }
    case KeyPress:
        on_key(event.xkey);
        break;
    default:
        break;
    }
    return true;
}

void MenuX11::on_key(XKeyEvent event)
{
    switch (XLookupKeysym(&event, 0))
    {
    case XK_Down:
        select(_layout.next(_selected, 1));
        break;
    case XK_Up:
        select(_layout.next(_selected, -1));
        break;
    case XK_Return:
    case XK_KP_Enter:
    case XK_Right:
        if (_layout.is_choosable(_selected))
        {
            activate(_selected);
        }
        break;
    case XK_Left:
    case XK_Escape:
        leave_level();
        break;
    default:
        break;
    }
}

void MenuX11::activate(int row)
{
    const PopupMenuLayout::Row& chosen = _layout.use_rows()[static_cast<std::size_t>(row)];
    if (chosen.kind == PopupMenuLayout::Kind::submenu)
    {
        enter_level(*static_cast<const MenuList*>(chosen.node));
        return;
    }
    // Not const: the action gets the item.
    MenuItem* item = _shown->use_root().find_item(static_cast<const MenuItem*>(chosen.node)->get_id());
    stop();
    if (item != nullptr)
    {
        item->choose();
    }
}

void MenuX11::select(int row)
{
    if (row == _selected)
    {
        return;
    }
    const int before = _selected;
    _selected = _layout.is_choosable(row) ? row : -1;
    const auto& rows = _layout.use_rows();
    for (int r : {before, _selected})
    {
        if (r >= 0)
        {
            draw_row(rows[static_cast<std::size_t>(r)], r == _selected);
        }
    }
}

void MenuX11::draw()
{
    const auto& rows = _layout.use_rows();
    for (std::size_t i = 0; i < rows.size(); ++i)
    {
        draw_row(rows[i], static_cast<int>(i) == _selected);
    }
}

void MenuX11::draw_row(const PopupMenuLayout::Row& row, bool selected)
{
    Display* display = _connection->use_display();
    const auto width = static_cast<unsigned>(_layout.get_width());
    XSetForeground(display, _gc, selected ? kHighlight : kFace);
    XFillRectangle(display, _handle, _gc, 0, row.y1, width, static_cast<unsigned>(row.y2 - row.y1));
    if (row.kind == PopupMenuLayout::Kind::separator)
    {
        const int y = (row.y1 + row.y2) / 2;
        XSetForeground(display, _gc, kFrame);
        XDrawLine(display, _handle, _gc, PopupMenuLayout::kPadding, y,
                  _layout.get_width() - PopupMenuLayout::kPadding - 1, y);
        return;
    }
    XSetForeground(display, _gc, selected ? kHighlightText : row.enabled ? kText : kGrayed);
    const int baseline = row.y1 + PopupMenuLayout::kPadding + _font->ascent;
    XDrawString(display, _handle, _gc, PopupMenuLayout::kMargin, baseline, row.text.c_str(),
                static_cast<int>(row.text.size()));
    if (row.checked)
    {
        // A tick left of the text.
        const int x = PopupMenuLayout::kMargin / 2 - 4;
        const int y = baseline - _font->ascent / 2;
        XDrawLine(display, _handle, _gc, x, y, x + 3, y + 3);
        XDrawLine(display, _handle, _gc, x + 3, y + 3, x + 8, y - 3);
    }
    if (row.kind == PopupMenuLayout::Kind::submenu)
    {
        const int x = _layout.get_width() - PopupMenuLayout::kMargin / 2 - 2;
        const int y = (row.y1 + row.y2) / 2;
        XPoint arrow[3] = {{static_cast<short>(x), static_cast<short>(y - 4)},
                           {static_cast<short>(x + 4), static_cast<short>(y)},
                           {static_cast<short>(x), static_cast<short>(y + 4)}};
        XFillPolygon(display, _handle, _gc, arrow, 3, Convex, CoordModeOrigin);
    }
}

}  // namespace gadu
