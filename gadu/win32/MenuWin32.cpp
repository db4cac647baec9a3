#include "gadu/win32/MenuWin32.h"

#include "gadu/MenuDelimiter.h"
#include "gadu/MenuItem.h"
#include "gadu/MenuRequest.h"
#include "gadu/win32/PlatformWin32.h"
#include "sys/FpuModeGuard.h"

#include <string>

namespace gadu
{

namespace
{

constexpr char kOwnerClass[] = "VelnorAudioPluginMenu";
constexpr char kOwnerTitle[] = "ze menu";
constexpr int kOwnerSize = 200;

std::string titled_line(const std::string& title)
{
    return "---- " + title + " ----";
}

}  // namespace

MenuWin32::~MenuWin32()
{
    if (is_shown())
    {
        stop();
    }
}

std::int32_t MenuWin32::show(const MenuRequest& request)
{
    Menu* menu = request.use_menu();
    // One menu at a time: the pop-up is modal, so a second request can only
    // come from inside the first one's loop.
    if (menu == nullptr || _window == nullptr || is_shown())
    {
        return -1;
    }
    POINT at = {};
    ::GetCursorPos(&at);
    at.x += request.get_offset_x();
    at.y += request.get_offset_y();
    if (!open_owner(at))
    {
        return -1;
    }
    _popup = build(menu->use_root());
    if (_popup == nullptr)
    {
        _error = get_last_error_text_win32("gadu::MenuWin32::show()");
        stop();
        return -1;
    }
    _shown = menu;
    _tracking = true;
    const auto chosen = static_cast<std::uint32_t>(::TrackPopupMenu(
        _popup, TPM_RETURNCMD | TPM_LEFTALIGN | TPM_TOPALIGN | TPM_RIGHTBUTTON, at.x, at.y, 0, _owner, nullptr));
    _tracking = false;
    stop();
    // After the platform's menu has gone, so that the action may open the
    // next one.
    if (MenuItem* item = menu->use_root().find_item(chosen))
    {
        item->choose();
    }
    return static_cast<std::int32_t>(chosen & 0x7FFFFFFFu);
}

bool MenuWin32::open_owner(POINT at)
{
    WNDCLASSEXA wc = {};
    wc.cbSize = sizeof(wc);
    wc.style = CS_VREDRAW | CS_HREDRAW;
    wc.lpfnWndProc = &MenuWin32::owner_proc;
    wc.hInstance = use_module_win32();
    wc.hCursor = ::LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));  // the standard arrow
    wc.lpszClassName = kOwnerClass;
    // Another editor of this module may show its menu on its own thread
    // right now: its class serves ours just as well.
    if (::RegisterClassExA(&wc) == 0 && ::GetLastError() != ERROR_CLASS_ALREADY_EXISTS)
    {
        _error = get_last_error_text_win32("gadu::MenuWin32::show()");
        return false;
    }
    // A child's position is in its parent's coordinates.
    POINT local = at;
    ::ScreenToClient(_window, &local);
    _owner = ::CreateWindowExA(0, kOwnerClass, kOwnerTitle, WS_CHILD, local.x, local.y, kOwnerSize, kOwnerSize,
                               _window, nullptr, use_module_win32(), nullptr);
    if (_owner == nullptr)
    {
        _error = get_last_error_text_win32("gadu::MenuWin32::show()");
        ::UnregisterClassA(kOwnerClass, use_module_win32());
        return false;
    }
    ::SetWindowLongPtrA(_owner, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    ::ShowWindow(_owner, SW_SHOWNA);
    return true;
}

std::int32_t MenuWin32::stop()
{
    std::int32_t result = 0;
    if (_popup != nullptr && ::DestroyMenu(_popup) == 0)
    {
        result = -1;
    }
    _popup = nullptr;
    _shown = nullptr;
    if (_owner == nullptr)
    {
        return -1;
    }
    ::DestroyWindow(_owner);
    _owner = nullptr;
    // Refused while another editor's menu still uses the class; the last one
    // to go takes it away.
    if (::UnregisterClassA(kOwnerClass, use_module_win32()) == 0)
    {
        result = -1;
    }
    return result;
}

HMENU MenuWin32::build(const MenuList& list)
{
    const HMENU menu = ::CreatePopupMenu();
    if (menu == nullptr)
    {
        return nullptr;
    }
    for (const auto& node : list.use_nodes())
    {
        if (node->is_visible() && !append(menu, *node))
        {
            // Takes the submenus already attached with it.
            ::DestroyMenu(menu);
            return nullptr;
        }
    }
    return menu;
}

bool MenuWin32::append(HMENU menu, const MenuNodeInterface& node)
{
    if (const auto* list = dynamic_cast<const MenuList*>(&node))
    {
        const HMENU sub = build(*list);
        if (sub == nullptr)
        {
            return false;
        }
        const UINT flags = MF_BYPOSITION | MF_POPUP | MF_STRING | (list->is_checked() ? MF_CHECKED : 0u);
        if (::InsertMenuA(menu, static_cast<UINT>(-1), flags, reinterpret_cast<UINT_PTR>(sub),
                          list->get_label().c_str()) == 0)
        {
            ::DestroyMenu(sub);
            return false;
        }
        return true;
    }
    if (const auto* item = dynamic_cast<const MenuItem*>(&node))
    {
        const UINT flags =
            MF_STRING | (item->is_disabled() ? MF_GRAYED : 0u) | (item->is_checked() ? MF_CHECKED : 0u);
        const std::string label = item->get_label().substr(0, kMaxLabel);
        return ::AppendMenuA(menu, flags, item->get_id(), label.c_str()) != 0;
    }
    if (const auto* delimiter = dynamic_cast<const MenuDelimiter*>(&node))
    {
        if (!delimiter->has_title())
        {
            return ::AppendMenuA(menu, MF_SEPARATOR, 0, nullptr) != 0;
        }
        return ::AppendMenuA(menu, MF_STRING | MF_GRAYED, 0, titled_line(delimiter->get_label()).c_str()) != 0;
    }
    // A node kind the platform has no entry for is left out.
    return true;
}

void MenuWin32::choose(std::uint32_t id) const
{
    if (_shown != nullptr)
    {
        if (MenuItem* item = _shown->use_root().find_item(id))
        {
            item->choose();
        }
    }
}

LRESULT CALLBACK MenuWin32::owner_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam)
{
    const sys::FpuModeGuard fpu(sys::FpuModeGuard::Denormals::keep);
    auto* self = reinterpret_cast<MenuWin32*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
    if (self == nullptr)
    {
        return ::DefWindowProcA(window, message, wparam, lparam);
    }
    try
    {
        switch (message)
        {
        case WM_COMMAND:
            self->choose(LOWORD(wparam));
            return 0;
        case WM_EXITMENULOOP:
            // While show() tracks, it tears the pop-up down itself as soon as
            // the loop returns: doing it here would free the menu under the
            // system's feet.
            if (!self->_tracking)
            {
                self->stop();
            }
            return 0;
        default:
            break;
        }
    }
    catch (...)
    {
        // The system's dispatcher cannot unwind our frames.
        return 0;
    }
    return ::DefWindowProcA(window, message, wparam, lparam);
}

}  // namespace gadu
