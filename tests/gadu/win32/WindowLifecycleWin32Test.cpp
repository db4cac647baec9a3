#include "gadu/win32/WindowWin32.h"

#include "tests/gadu/win32/HostWindowWin32.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <vector>
#include <thread>

namespace gadu
{
namespace
{

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

// The process's GDI and USER objects, as the system counts them and as far
// as their handle tables reach.
std::array<std::uint32_t, 4> gui_objects()
{
    const HANDLE self = ::GetCurrentProcess();
    return {static_cast<std::uint32_t>(::GetGuiResources(self, GR_GDIOBJECTS)),
            static_cast<std::uint32_t>(::GetGuiResources(self, GR_USEROBJECTS)),
            handle_high_water([] { return ::CreateSolidBrush(RGB(1, 2, 3)); }, [](HBRUSH b) { ::DeleteObject(b); }),
            handle_high_water([] { return ::CreatePopupMenu(); }, [](HMENU m) { ::DestroyMenu(m); })};
}

// The scene in a window, as an editor would set it up.
struct Editor
{
    Editor() { scene.attach(window); }

    // A press on a, and with a capture a move.
    void press_a() const
    {
        ::SendMessageA(window.use_handle(), WM_LBUTTONDOWN, MK_LBUTTON, gadu_test::at(15, 12));
        ::SendMessageA(window.use_handle(), WM_MOUSEMOVE, MK_LBUTTON, gadu_test::at(15, 16));
    }

    gadu_test::WindowScene scene;
    WindowWin32 window;
};

class WindowLifecycleWin32Test : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { parent = gadu_test::make_host_window(); }
    static void TearDownTestSuite() { ::DestroyWindow(parent); }

    // One whole life of an editor: open, paint, a timer and a drag, close.
    static void live_once(HWND host = parent)
    {
        Editor editor;
        ASSERT_EQ(editor.window.open(host), 0) << editor.window.get_error_text();
        ::UpdateWindow(editor.window.use_handle());
        std::uint32_t id = 0;
        editor.scene.a.handle_message(SetTimer(&editor.scene.a, 0.01f, id));
        editor.scene.a.capture_mode = capture_mode::relative;
        editor.press_a();
        gadu_test::pump(0);
        editor.window.close();
    }

    static inline HWND parent = nullptr;
};

TEST_F(WindowLifecycleWin32Test, TwoHundredLivesLeakNothingAndLeaveNoClass)
{
    live_once();
    const std::array<std::uint32_t, 4> before = gui_objects();
    for (int i = 0; i < 200; ++i)
    {
        live_once();
    }
    EXPECT_EQ(gui_objects(), before);
    EXPECT_EQ(WindowWin32::get_open_count(), 0);
    EXPECT_FALSE(WindowWin32::is_class_registered());
    EXPECT_FALSE(gadu_test::class_exists(WindowWin32::get_class_name()));
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
    EXPECT_TRUE(gadu_test::class_exists(WindowWin32::get_class_name()));
    second.press_a();
    EXPECT_EQ(second.scene.log.back(), "a move 15,16");
    second.window.close();
    // Closed but not yet gone: the class waits for the last window object.
    EXPECT_TRUE(gadu_test::class_exists(WindowWin32::get_class_name()));
    // Reopening works, in the same object and with the same class.
    ASSERT_EQ(second.window.open(parent), 0);
    second.window.close();
}

// Two hosts' editor threads, each with its own windows coming and going: the
// class must never go while one of them is about to make a window.
TEST_F(WindowLifecycleWin32Test, EditorsOnTwoThreadsShareTheClassSafely)
{
    std::atomic<int> failures{0};
    auto editor_thread = [&] {
        const HWND host = gadu_test::make_host_window();
        for (int i = 0; i < 40; ++i)
        {
            live_once(host);
            failures += ::testing::Test::HasFatalFailure() ? 1 : 0;
        }
        ::DestroyWindow(host);
    };
    std::thread first(editor_thread);
    std::thread second(editor_thread);
    first.join();
    second.join();
    EXPECT_EQ(failures.load(), 0);
    EXPECT_EQ(WindowWin32::get_open_count(), 0);
    EXPECT_FALSE(gadu_test::class_exists(WindowWin32::get_class_name()));
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
    EXPECT_EQ(editor.scene.a.handle_message(MouseCapture(&editor.scene.a, capture_mode::plain)), -1);
    EXPECT_EQ(editor.scene.a.handle_message(Invalidate(Rect{0, 0, 5, 5})), -1);
}

TEST_F(WindowLifecycleWin32Test, AHostThatDestroysItsWindowFirstTakesOursAlong)
{
    Editor editor;
    const HWND doomed = gadu_test::make_host_window();
    ASSERT_EQ(editor.window.open(doomed), 0);
    editor.scene.a.capture_mode = capture_mode::hidden;
    editor.press_a();
    const int hidden = gadu_test::cursor_count();
    ::DestroyWindow(doomed);
    EXPECT_EQ(editor.window.use_handle(), nullptr);
    EXPECT_EQ(WindowWin32::get_open_count(), 0);
    EXPECT_EQ(editor.scene.log.back(), "a lost");
    EXPECT_EQ(gadu_test::cursor_count(), hidden + 1);
    // Its timer went with it; closing afterwards is harmless, opening again works.
    gadu_test::pump(20);
    editor.window.close();
    ASSERT_EQ(editor.window.open(parent), 0);
    editor.window.close();
}

}  // namespace
}  // namespace gadu
