#include "gadu/CtrlGroupItem.h"
#include "gadu/Menu.h"
#include "gadu/MenuActionInterface.h"
#include "gadu/MenuDelimiter.h"
#include "gadu/MenuItem.h"
#include "gadu/MenuRequest.h"
#include "gadu/ShowObject.h"
#include "gadu/win32/WindowWin32.h"

#include "tests/gadu/ProbeControl.h"
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

class RecordingAction : public MenuActionInterface
{
public:
    explicit RecordingAction(Log& log) : _log(log) {}
    void on_chosen(MenuItem& item) override { _log.push_back("chose " + item.get_label()); }

private:
    Log& _log;
};

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
        one = &menu.use_root().add(std::make_unique<MenuItem>("One", &action));
        menu.use_root().add(std::make_unique<MenuDelimiter>());
        two = &menu.use_root().add(std::make_unique<MenuItem>("Two", &action));
        MenuItem& off = menu.use_root().add(std::make_unique<MenuItem>("Bound to CC 74"));
        off.set_disabled(true);
        menu.use_root().add(std::make_unique<MenuDelimiter>("more"));
        MenuList& sub = menu.use_root().add(std::make_unique<MenuList>("Sub"));
        sub.add(std::make_unique<MenuItem>("Deep", &action));
        MenuItem& hidden = menu.use_root().add(std::make_unique<MenuItem>("Hidden", &action));
        hidden.set_visible(false);

        controls.add_control(control);
        controls.set_position(0, 0);
        controls.handle_message(ShowObject(true));
        window.set_content_size(64, 64);
        window.set_window_size(64, 64);
        window.set_control_root(&controls);
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

    static bool owner_class_exists()
    {
        WNDCLASSEXA wc = {};
        wc.cbSize = sizeof(wc);
        return ::GetClassInfoExA(::GetModuleHandleA(nullptr), "VelnorAudioPluginMenu", &wc) != 0;
    }

    static inline HWND parent = nullptr;
    Log log;
    RecordingAction action{log};
    Menu menu;
    MenuItem* one = nullptr;
    MenuItem* two = nullptr;
    CtrlGroupItem controls;
    MenuControl control{log, menu};
    WindowWin32 window;
    HWND hwnd = nullptr;
};

TEST_F(MenuWin32Test, ReturnsTheChosenItemAndRunsItsActionAfterTheMenuHasGone)
{
    // Down to "One", over the separator to "Two".
    type({VK_DOWN, VK_DOWN, VK_RETURN});
    right_click();
    EXPECT_EQ(control.shown, static_cast<std::int32_t>(two->get_id()));
    EXPECT_EQ(log, (Log{"m highlight", "chose Two"}));
    EXPECT_FALSE(owner_class_exists());
    EXPECT_EQ(::FindWindowExA(hwnd, nullptr, "VelnorAudioPluginMenu", nullptr), nullptr);
}

TEST_F(MenuWin32Test, EscapeChoosesNothing)
{
    type({VK_DOWN, VK_ESCAPE});
    right_click();
    EXPECT_EQ(control.shown, 0);
    EXPECT_EQ(log, Log{"m highlight"});
    EXPECT_FALSE(owner_class_exists());
    // Nothing is shown any more, so there is nothing to stop.
    EXPECT_EQ(control.handle_message(MenuStop()), -1);
}

TEST_F(MenuWin32Test, ANullMenuOrAClosedWindowIsRefused)
{
    EXPECT_EQ(control.handle_message(MenuRequest(nullptr, 0, 0)), -1);
    window.close();
    EXPECT_EQ(control.handle_message(MenuRequest(&menu, 0, 0)), -1);
}

}  // namespace
}  // namespace gadu
