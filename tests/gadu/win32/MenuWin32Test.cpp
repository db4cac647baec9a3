#include "gadu/CtrlGroupItem.h"
#include "gadu/Menu.h"
#include "gadu/MenuActionInterface.h"
#include "gadu/MenuDelimiter.h"
#include "gadu/MenuItem.h"
#include "gadu/MenuRequest.h"
#include "gadu/ShowObject.h"
#include "gadu/win32/MenuWin32.h"
#include "gadu/win32/WindowWin32.h"

#include "tests/gadu/ProbeControl.h"
#include "tests/gadu/WindowScene.h"
#include "tests/gadu/win32/HostWindowWin32.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

namespace gadu
{
namespace
{

using gadu_test::Log;

// Opens its menu on a right click, as a knob offers its MIDI choices.
class MenuControl : public gadu_test::ProbeControl
{
public:
    MenuControl(Log& log, Menu& menu) : ProbeControl("m", log, Rect{0, 0, 40, 40}), _menu(menu) {}
    std::int32_t on_mouse_click(const MouseClick& m) override
    {
        if (m.get_buttons() == mouse_button::right)
        {
            shown = handle_message(MenuRequest(&_menu, 0, 0));
        }
        return 1;
    }
    std::int32_t shown = 99;

private:
    Menu& _menu;
};

class MenuWin32Test : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { parent = gadu_test::make_host_window(); }
    static void TearDownTestSuite() { ::DestroyWindow(parent); }

    void SetUp() override
    {
        menu.use_root().add(std::make_unique<MenuItem>("One", &action));
        menu.use_root().add(std::make_unique<MenuDelimiter>());
        two = &menu.use_root().add(std::make_unique<MenuItem>("Two", &action));
        MenuItem& off = menu.use_root().add(std::make_unique<MenuItem>("Bound to CC 74"));
        off.set_disabled(true);
        menu.use_root().add(std::make_unique<MenuDelimiter>("more"));
        MenuList& sub = menu.use_root().add(std::make_unique<MenuList>("Sub"));
        sub.add(std::make_unique<MenuItem>("Deep", &action));
        MenuItem& hidden = menu.use_root().add(std::make_unique<MenuItem>("Hidden", &action));
        hidden.set_visible(false);

        gadu_test::set_up_tree(window, controls, control, 64, 64);
        ASSERT_EQ(window.open(parent), 0) << window.get_error_text();
        hwnd = window.use_handle();
        log.clear();
    }

    void TearDown() override { window.close(); }

    // The user's keys, waiting in the queue that the menu's modal loop reads.
    void type(std::initializer_list<WPARAM> keys) const
    {
        for (WPARAM key : keys)
        {
            ::PostMessageA(hwnd, WM_KEYDOWN, key, 0);
            ::PostMessageA(hwnd, WM_KEYUP, key, 0);
        }
    }

    void right_click()
    {
        ::SendMessageA(hwnd, WM_RBUTTONDOWN, MK_RBUTTON, gadu_test::at(10, 10));
    }

    static inline HWND parent = nullptr;
    Log log;
    gadu_test::RecordingAction action{log};
    Menu menu;
    MenuItem* two = nullptr;
    CtrlGroupItem controls;
    MenuControl control{log, menu};
    WindowWin32 window;
    HWND hwnd = nullptr;
};

TEST_F(MenuWin32Test, EscapeChoosesNothingAndAChosenItemsActionRunsAfterTheMenuHasGone)
{
    type({VK_DOWN, VK_ESCAPE});
    right_click();
    EXPECT_EQ(control.shown, 0);
    // Down to "One", over the separator to "Two".
    type({VK_DOWN, VK_DOWN, VK_RETURN});
    right_click();
    EXPECT_EQ(control.shown, static_cast<std::int32_t>(two->get_id()));
    EXPECT_EQ(log, (Log{"m highlight", "m highlight", "chose Two"}));
    EXPECT_FALSE(gadu_test::class_exists("VelnorAudioPluginMenu"));
    EXPECT_EQ(::FindWindowExA(hwnd, nullptr, "VelnorAudioPluginMenu", nullptr), nullptr);
    // Nothing is shown any more, so there is nothing to stop.
    EXPECT_EQ(control.handle_message(MenuStop()), -1);
}

// The entries of the shown pop-up as the system holds them: text and state.
std::vector<std::string> entries_of(HMENU menu)
{
    std::vector<std::string> entries;
    for (int i = 0; i < ::GetMenuItemCount(menu); ++i)
    {
        char text[256] = {};
        MENUITEMINFOA info = {};
        info.cbSize = sizeof(info);
        info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_SUBMENU | MIIM_STRING;
        info.dwTypeData = text;
        info.cch = sizeof(text);
        ::GetMenuItemInfoA(menu, static_cast<UINT>(i), TRUE, &info);
        entries.push_back((info.fType & MFT_SEPARATOR) != 0
                              ? "separator"
                              : text + std::string((info.fState & MF_GRAYED) != 0 ? " grayed" : "") +
                                    ((info.fState & MFS_CHECKED) != 0 ? " checked" : "") +
                                    (info.hSubMenu != nullptr ? " >" : ""));
    }
    return entries;
}

// Looks at the pop-up while the modal loop shows it, then closes it.
std::vector<std::string> seen;
void CALLBACK inspect_popup(HWND, UINT, UINT_PTR id, DWORD)
{
    ::KillTimer(nullptr, id);
    const HWND popup = ::FindWindowA("#32768", nullptr);
    constexpr UINT kGetMenu = 0x01E1;  // asks a pop-up window for its menu
    seen = entries_of(reinterpret_cast<HMENU>(::SendMessageA(popup, kGetMenu, 0, 0)));
    ::PostMessageA(popup, WM_KEYDOWN, VK_ESCAPE, 0);
}

TEST_F(MenuWin32Test, ThePopUpShowsTheVisibleEntriesAsTheModelDescribesThem)
{
    two->set_checked(true);
    two->set_label(std::string(200, 'L'));
    seen.clear();
    ::SetTimer(nullptr, 0, 10, &inspect_popup);
    right_click();
    EXPECT_EQ(seen, (std::vector<std::string>{"One", "separator", std::string(MenuWin32::kMaxLabel, 'L') + " checked",
                                              "Bound to CC 74 grayed", "---- more ---- grayed", "Sub >"}));
    EXPECT_EQ(control.shown, 0);
}

TEST_F(MenuWin32Test, ANullMenuOrAClosedWindowIsRefused)
{
    EXPECT_EQ(control.handle_message(MenuRequest(nullptr, 0, 0)), -1);
    window.close();
    EXPECT_EQ(control.handle_message(MenuRequest(&menu, 0, 0)), -1);
}

}  // namespace
}  // namespace gadu
