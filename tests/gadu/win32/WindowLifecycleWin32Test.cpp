#include "gadu/CtrlGroupItem.h"
#include "gadu/MouseMessage.h"
#include "gadu/ShowObject.h"
#include "gadu/TimerMessage.h"
#include "gadu/win32/WindowWin32.h"

#include "tests/gadu/ProbeControl.h"
#include "tests/gadu/win32/HostWindowWin32.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <vector>
#include <memory>

namespace gadu
{
namespace
{

using gadu_test::Log;

bool class_exists()
{
    WNDCLASSEXA wc = {};
    wc.cbSize = sizeof(wc);
    return ::GetClassInfoExA(::GetModuleHandleA(nullptr), WindowWin32::get_class_name(), &wc) != 0;
}

// How far the process's table of GDI or USER handles reaches: the largest
// slot among many fresh objects. Freed slots are used again first, so the
// mark moves only when objects stay behind. It stands in where the system
// does not count objects per process (wine's GetGuiResources answers 0).
template <typename Make, typename Free>
std::uint32_t handle_high_water(Make make, Free free)
{
    std::vector<decltype(make())> made(3000);
    std::generate(made.begin(), made.end(), make);
    std::uint32_t mark = 0;
    for (auto h : made)
    {
        mark = std::max(mark, static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(h) & 0xFFFFu));
    }
    std::for_each(made.begin(), made.end(), free);
    return mark;
}

struct GuiObjects
{
    DWORD gdi = 0;
    DWORD user = 0;
    std::uint32_t gdi_mark = 0;
    std::uint32_t user_mark = 0;

    static GuiObjects count()
    {
        const HANDLE self = ::GetCurrentProcess();
        return GuiObjects{
            ::GetGuiResources(self, GR_GDIOBJECTS), ::GetGuiResources(self, GR_USEROBJECTS),
            handle_high_water([] { return ::CreateSolidBrush(RGB(1, 2, 3)); },
                              [](HBRUSH b) { ::DeleteObject(b); }),
            handle_high_water([] { return ::CreatePopupMenu(); }, [](HMENU m) { ::DestroyMenu(m); })};
    }
};

// A window with one probe over its whole content, as an editor would set it up.
struct Editor
{
    Editor()
    {
        controls.add_control(probe);
        controls.set_position(0, 0);
        controls.handle_message(ShowObject(true));
        window.set_content_size(64, 48);
        window.set_window_size(64, 48);
        window.set_control_root(&controls);
    }

    Log log;
    CtrlGroupItem controls;
    gadu_test::ProbeControl probe{"p", log, Rect{0, 0, 64, 48}, 0x336699u};
    WindowWin32 window;
};

class WindowLifecycleWin32Test : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { parent = gadu_test::make_host_window(); }
    static void TearDownTestSuite() { ::DestroyWindow(parent); }

    // One whole life of an editor: open, paint, a timer and a drag, close.
    static void live_once()
    {
        Editor editor;
        ASSERT_EQ(editor.window.open(parent), 0) << editor.window.get_error_text();
        ::UpdateWindow(editor.window.use_handle());
        std::uint32_t id = 0;
        editor.probe.handle_message(SetTimer(&editor.probe, 0.01f, id));
        editor.probe.capture_mode = capture_mode::relative;
        ::SendMessageA(editor.window.use_handle(), WM_LBUTTONDOWN, MK_LBUTTON, gadu_test::at(5, 5));
        ::SendMessageA(editor.window.use_handle(), WM_MOUSEMOVE, MK_LBUTTON, gadu_test::at(5, 9));
        gadu_test::pump(0);
        editor.window.close();
    }

    static inline HWND parent = nullptr;
};

TEST_F(WindowLifecycleWin32Test, TwoHundredLivesLeakNothingAndLeaveNoClass)
{
    live_once();
    const GuiObjects before = GuiObjects::count();
    for (int i = 0; i < 200; ++i)
    {
        live_once();
    }
    const GuiObjects after = GuiObjects::count();
    EXPECT_EQ(after.gdi, before.gdi);
    EXPECT_EQ(after.user, before.user);
    EXPECT_EQ(after.gdi_mark, before.gdi_mark);
    EXPECT_EQ(after.user_mark, before.user_mark);
    EXPECT_EQ(WindowWin32::get_open_count(), 0);
    EXPECT_FALSE(WindowWin32::is_class_registered());
    EXPECT_FALSE(class_exists());
    EXPECT_EQ(::FindWindowExA(parent, nullptr, WindowWin32::get_class_name(), nullptr), nullptr);
}

TEST_F(WindowLifecycleWin32Test, TheClassStaysWhileAnyWindowIsOpen)
{
    auto first = std::make_unique<Editor>();
    Editor second;
    ASSERT_EQ(first->window.open(parent), 0);
    ASSERT_EQ(second.window.open(parent), 0);
    EXPECT_EQ(WindowWin32::get_open_count(), 2);
    first.reset();
    EXPECT_EQ(WindowWin32::get_open_count(), 1);
    EXPECT_TRUE(class_exists());
    ::SendMessageA(second.window.use_handle(), WM_LBUTTONDOWN, MK_LBUTTON, gadu_test::at(3, 4));
    EXPECT_EQ(second.log.back(), "p click 3,4 b1 d0");
    second.window.close();
    // Closed but not yet gone: the class waits for the last window object.
    EXPECT_TRUE(class_exists());
    // Reopening works, in the same object and with the same class.
    ASSERT_EQ(second.window.open(parent), 0);
    second.window.close();
}

TEST_F(WindowLifecycleWin32Test, AFailedOpenSaysWhyAndLeavesTheWindowClosed)
{
    Editor editor;
    const auto not_a_window = reinterpret_cast<HWND>(static_cast<std::uintptr_t>(0x7FFF0010));
    EXPECT_EQ(editor.window.open(not_a_window), -1);
    EXPECT_FALSE(editor.window.get_error_text().empty());
    EXPECT_EQ(editor.window.use_handle(), nullptr);
    EXPECT_EQ(WindowWin32::get_open_count(), 0);
    // Up messages find no window to go to.
    EXPECT_EQ(editor.probe.handle_message(MouseCapture(&editor.probe, capture_mode::plain)), -1);
    EXPECT_EQ(editor.probe.handle_message(Invalidate(Rect{0, 0, 5, 5})), -1);
}

TEST_F(WindowLifecycleWin32Test, AHostThatDestroysItsWindowFirstTakesOursAlong)
{
    Editor editor;
    const HWND doomed = gadu_test::make_host_window();
    ASSERT_EQ(editor.window.open(doomed), 0);
    editor.probe.capture_mode = capture_mode::hidden;
    ::SendMessageA(editor.window.use_handle(), WM_LBUTTONDOWN, MK_LBUTTON, gadu_test::at(5, 5));
    const int hidden = ::ShowCursor(TRUE) - 1;
    ::ShowCursor(FALSE);
    ::DestroyWindow(doomed);
    EXPECT_EQ(editor.window.use_handle(), nullptr);
    EXPECT_EQ(WindowWin32::get_open_count(), 0);
    EXPECT_EQ(editor.log.back(), "p lost");
    EXPECT_EQ(::ShowCursor(TRUE) - 1, hidden + 1);
    ::ShowCursor(FALSE);
    // Its timer went with it; closing afterwards is harmless, opening again works.
    gadu_test::pump(20);
    editor.window.close();
    ASSERT_EQ(editor.window.open(parent), 0);
    editor.window.close();
}

}  // namespace
}  // namespace gadu
