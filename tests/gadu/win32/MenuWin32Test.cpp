#include "gadu/Menu.h"
#include "gadu/MenuDelimiter.h"
#include "gadu/MenuItem.h"
#include "gadu/MenuRequest.h"
#include "gadu/win32/MenuWin32.h"

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

// The menu of a control, as a knob offers its MIDI choices.
class MenuWin32Test : public gadu_test::SceneWindowWin32Test
{
protected:
    void SetUp() override
    {
        SceneWindowWin32Test::SetUp();
        MenuList& root = menu.use_root();
        root.add(std::make_unique<MenuItem>("One", &action));
        root.add(std::make_unique<MenuDelimiter>());
        two = &root.add(std::make_unique<MenuItem>("Two", &action));
        root.add(std::make_unique<MenuItem>("Bound to CC 74")).set_disabled(true);
        root.add(std::make_unique<MenuDelimiter>("more"));
        root.add(std::make_unique<MenuList>("Sub")).add(std::make_unique<MenuItem>("Deep", &action));
        root.add(std::make_unique<MenuItem>("Hidden", &action)).set_visible(false);
    }

    // Shows the menu for b; the user's keys wait in the queue that the menu's
    // modal loop reads.
    std::int32_t show(std::initializer_list<WPARAM> keys)
    {
        for (WPARAM key : keys)
        {
            ::PostMessageA(hwnd, WM_KEYDOWN, key, 0);
            ::PostMessageA(hwnd, WM_KEYUP, key, 0);
        }
        return scene.b.handle_message(MenuRequest(&menu, 0, 0));
    }

    Menu menu;
    gadu_test::RecordingAction action{scene.log};
    MenuItem* two = nullptr;
};

// The entries of a shown pop-up as the system holds them: text and state.
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

TEST_F(MenuWin32Test, ThePopUpShowsTheVisibleEntriesAndTheChosenItemsActionRunsOnceItHasGone)
{
    two->set_checked(true);
    two->set_label(std::string(200, 'L'));
    seen.clear();
    ::SetTimer(nullptr, 0, 10, &inspect_popup);
    EXPECT_EQ(show({}), 0);
    EXPECT_EQ(seen, (std::vector<std::string>{"One", "separator", std::string(MenuWin32::kMaxLabel, 'L') + " checked",
                                              "Bound to CC 74 grayed", "---- more ---- grayed", "Sub >"}));
    // Down to "One", over the separator to "Two".
    EXPECT_EQ(show({VK_DOWN, VK_DOWN, VK_RETURN}), static_cast<std::int32_t>(two->get_id()));
    EXPECT_EQ(scene.log, Log{"chose " + std::string(200, 'L')});
    EXPECT_FALSE(gadu_test::class_exists("VelnorAudioPluginMenu"));
    EXPECT_EQ(::FindWindowExA(hwnd, nullptr, "VelnorAudioPluginMenu", nullptr), nullptr);
    // Nothing is shown any more, so there is nothing to stop.
    EXPECT_EQ(scene.b.handle_message(MenuStop()), -1);
}

TEST_F(MenuWin32Test, ANullMenuOrAClosedWindowIsRefused)
{
    EXPECT_EQ(scene.b.handle_message(MenuRequest(nullptr, 0, 0)), -1);
    window.close();
    EXPECT_EQ(show({}), -1);
}

}  // namespace
}  // namespace gadu
