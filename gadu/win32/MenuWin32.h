#pragma once

#include "gadu/Menu.h"

#include <windows.h>

#include <cstdint>
#include <string>

namespace gadu
{

class MenuRequest;

// Shows a menu model as the platform's pop-up menu at the cursor, modally,
// and runs the action of the chosen item. The pop-up needs an owner window
// for its notifications: a hidden-in-plain-sight child of the editor window
// that lives only while the menu is shown.
class MenuWin32 : public Menu
{
public:
    MenuWin32() = default;
    ~MenuWin32() override;

    // The editor window the owner is made in; null while it is closed.
    void set_window(HWND window) { _window = window; }

    // The chosen item's id (0 when the user chose nothing), or -1 when the
    // menu could not be shown.
    std::int32_t show(const MenuRequest& request);
    // Tears down the pop-up, the owner window and its class: 0, or -1 when
    // something was not there or would not go.
    std::int32_t stop() override;

    bool is_shown() const { return _owner != nullptr; }
    const std::string& get_error_text() const { return _error; }

    // The longest label a pop-up entry shows.
    static constexpr std::size_t kMaxLabel = 127;

private:
    static LRESULT CALLBACK owner_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

    bool open_owner(POINT at);
    static HMENU build(const MenuList& list);
    static bool append(HMENU menu, const MenuNodeInterface& node);
    void choose(std::uint32_t id) const;

    HWND _window = nullptr;
    HWND _owner = nullptr;
    HMENU _popup = nullptr;
    Menu* _shown = nullptr;
    bool _tracking = false;
    std::string _error;
};

}  // namespace gadu
