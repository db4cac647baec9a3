// GoogleTest first: Xlib defines names such as None as macros.
#include <gtest/gtest.h>

#include "gadu/Menu.h"
#include "gadu/MenuDelimiter.h"
#include "gadu/MenuItem.h"
#include "gadu/MenuRequest.h"
#include "gadu/x11/ConnectionX11.h"
#include "gadu/x11/WindowX11.h"
#include "sys/Clock.h"
#include "sys/ClockPin.h"

#include "tests/gadu/WindowScene.h"
#include "tests/gadu/x11/X11Rig.h"

#include <X11/keysym.h>

#include <algorithm>

namespace gadu
{
namespace
{

using gadu_test::HostX11;
using gadu_test::Log;
using gadu_test::WindowScene;

constexpr int kWidth = WindowScene::kLarge.width;
constexpr int kHeight = WindowScene::kLarge.height;

// The probes of the scene, where a right click on b opens a menu.
class WindowX11Test : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_FALSE(server.get_name().empty()) << "Xvfb did not start";
        ASSERT_NE(host.display, nullptr);
        HostX11::errors = 0;
        errors_before = ConnectionX11::get_unexpected_error_count();
        parent = host.make_window(300, 240);
        scene.attach(window);
        window.set_display_name(server.get_name());
        open();
    }

    void TearDown() override
    {
        window.close();
        EXPECT_EQ(HostX11::errors, 0);
        EXPECT_EQ(ConnectionX11::get_unexpected_error_count(), errors_before);
    }

    void open()
    {
        ASSERT_EQ(window.open(reinterpret_cast<void*>(static_cast<std::uintptr_t>(parent))), 0)
            << window.get_error_text();
        // Until the first frame is on the screen.
        const int p = window.use_zoom().to_platform(15);
        ASSERT_TRUE(idle_until([&] {
            return screen(p + 1, p + 1).at(static_cast<std::size_t>(p * (p + 1) + p)) == WindowScene::kColourA;
        }));
        scene.log.clear();
    }

    bool idle_until(const std::function<bool()>& done)
    {
        return gadu_test::idle_until([&] { window.idle(); }, done);
    }
    bool logged(const std::string& line) const
    {
        return std::find(scene.log.begin(), scene.log.end(), line) != scene.log.end();
    }
    void idle_for(int ms)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
        idle_until([&] { return std::chrono::steady_clock::now() >= end; });
    }

    std::vector<std::uint32_t> screen(int width = kWidth, int height = kHeight) const
    {
        return host.capture(parent, width, height);
    }

    // One server for the tests of a process, started when the first needs it.
    static gadu_test::VirtualDisplay& use_server()
    {
        static gadu_test::VirtualDisplay server;
        return server;
    }

    gadu_test::VirtualDisplay& server = use_server();
    HostX11 host{server.get_name()};
    Window parent = 0;
    std::uint32_t errors_before = 0;
    WindowScene scene;
    WindowX11 window;
};

TEST_F(WindowX11Test, OpensAChildOfTheHostWindowThatShowsWhatTheToolkitDraws)
{
    EXPECT_EQ(host.children_of(parent), std::vector<Window>{window.use_handle()});
    XWindowAttributes attributes{};
    XGetWindowAttributes(host.display, window.use_handle(), &attributes);
    EXPECT_EQ(attributes.width, kWidth);
    EXPECT_EQ(attributes.height, kHeight);
    const std::vector<std::uint32_t> shown = screen();
    EXPECT_EQ(scene.count_wrong([&](int x, int y) { return shown.at(static_cast<std::size_t>(y * kWidth) + x); }),
              0);
    EXPECT_TRUE(window.is_shared_memory());
}

TEST_F(WindowX11Test, AtZoomTwoEveryPixelIsABlockAndAFixedWindowShowsAFaceAroundIt)
{
    window.close();
    window.set_zoom(Zoom(2));
    window.set_resizable(false);
    window.set_window_size(kWidth + 20, kHeight + 10);
    open();
    const int width = 2 * (kWidth + 20);
    const std::vector<std::uint32_t> shown = screen(width, 2 * (kHeight + 10));
    const auto at = [&](int x, int y) { return shown.at(static_cast<std::size_t>(y * width + x)); };
    EXPECT_EQ(scene.count_wrong(at, 2), 0);
    for (const auto& [x, y] : {std::pair{width - 1, 0}, {2 * kWidth, 2 * kHeight - 1}, {0, 2 * kHeight}})
    {
        EXPECT_EQ(at(x, y), 0xF0F0F0u) << x << "," << y;
    }
}

TEST_F(WindowX11Test, ButtonsWheelAndModifiersReachTheControlUnderThePointer)
{
    host.move(15, 12);
    // Quick enough and close enough: the second press is a double click.
    host.click(Button1, 2);
    host.move(55, 35);
    host.key(XK_Shift_L, true);
    host.key(XK_Control_L, true);
    host.click(Button3);
    host.key(XK_Control_L, false);
    host.key(XK_Shift_L, false);
    host.click(4);
    host.click(5);
    ASSERT_TRUE(idle_until([&] { return logged("b wheel -1.000000"); }));
    EXPECT_EQ(scene.log, (Log{"a move 15,12", "a highlight", "a click 15,12 b1 d0", "a click 15,12 b0 d0",
                              "a highlight", "a click 15,12 b1 d1", "a click 15,12 b0 d0", "b move 55,35",
                              "b highlight", "b click 55,35 b2 d0 m3", "b click 55,35 b0 d0 m3", "b wheel 1.000000",
                              "b wheel -1.000000"}));
}

TEST_F(WindowX11Test, ACapturingControlGetsTheMotionOutsideTheWindowUntilItLetsGo)
{
    scene.a.capture_mode = capture_mode::plain;
    host.move(12, 12);
    host.button(Button1, true);
    ASSERT_TRUE(idle_until([&] { return scene.a.capture_result == 0; }));
    // Far outside the editor, and out of the host's window too.
    host.move(250, 200);
    host.move(400, 300);
    host.button(Button1, false);
    ASSERT_TRUE(idle_until([&] { return logged("a lost"); }));
    EXPECT_EQ(scene.log, (Log{"a move 12,12", "a highlight", "a click 12,12 b1 d0", "a move 250,200",
                              "a move 400,300", "a click 400,300 b0 d0", "a lost"}));
    // Free again: the pointer's moves go by position, and leaving the window
    // is nobody's business.
    scene.log.clear();
    host.move(52, 32);
    host.move(500, 500);
    host.move(53, 32);
    ASSERT_TRUE(idle_until([&] { return logged("b move 53,32"); }));
    EXPECT_EQ(scene.log, (Log{"b move 52,32", "b move 53,32"}));
}

TEST_F(WindowX11Test, EndlessDragDeliversTheHandsMotionAndTakesThePointerBack)
{
    sys::ClockPin clock(sys::get_clock_s() + 100.0);
    scene.a.capture_mode = capture_mode::relative;
    host.move(20, 20);
    host.button(Button1, true);
    ASSERT_TRUE(idle_until([&] { return scene.a.capture_result == 0; }));
    scene.log.clear();
    host.move(20, 50);
    ASSERT_TRUE(idle_until([&] { return logged("a move 0,30"); }));
    int x = 0;
    int y = 0;
    // From 250 ms on the pointer goes back to the press point; motion the
    // hand made before the warp reached the server still counts from where
    // the hand was, and after it from the press point.
    clock.advance(0.3);
    host.move(20, 70);
    host.move(20, 75);
    ASSERT_TRUE(idle_until([&] {
        host.pointer(x, y);
        return y == 20;
    }));
    host.move(23, 16);
    host.button(Button1, false);
    ASSERT_TRUE(idle_until([&] { return logged("a lost"); }));
    // Only the drag's own motion counts: once the capture is lost, the
    // pointer going back to the press point reaches the control as a plain
    // move, sooner or later depending on how fast this process runs.
    int total[2] = {0, 0};
    for (auto line = scene.log.begin(); *line != "a lost"; ++line)
    {
        int dx = 0;
        int dy = 0;
        // Other lines leave both at 0.
        std::sscanf(line->c_str(), "a move %d,%d", &dx, &dy);
        total[0] += dx;
        total[1] += dy;
    }
    // 30 + 20 + 5 down, then 4 up and 3 right from the press point.
    EXPECT_EQ(total[0], 3);
    EXPECT_EQ(total[1], 51);
}

TEST_F(WindowX11Test, AWindowHiddenUnderTheDragTakesTheCaptureAway)
{
    scene.b.capture_mode = capture_mode::hidden;
    host.move(52, 32);
    host.button(Button1, true);
    ASSERT_TRUE(idle_until([&] { return scene.b.capture_result == 0; }));
    XUnmapWindow(host.display, parent);
    XSync(host.display, False);
    ASSERT_TRUE(idle_until([&] { return logged("b lost"); }));
    host.button(Button1, false);
    XMapWindow(host.display, parent);
    XSync(host.display, False);
}

TEST_F(WindowX11Test, RepaintsCoverWhatWasInvalidatedOrExposedAndNothingElse)
{
    EXPECT_EQ(scene.b.handle_message(Invalidate(Rect{40, 40, 200, 300})), 0);
    ASSERT_TRUE(idle_until([&] { return logged("b end 40,40,96,64"); }));
    EXPECT_EQ(scene.log, (Log{"b begin 40,40,96,64", "b redraw 40,40,96,64", "b end 40,40,96,64"}));
    // The server asks for what another window uncovered.
    scene.log.clear();
    XClearArea(host.display, window.use_handle(), 8, 12, 6, 4, True);
    XSync(host.display, False);
    ASSERT_TRUE(idle_until([&] { return logged("a end 8,12,14,16"); }));
    EXPECT_EQ(scene.log, (Log{"a begin 8,12,14,16", "a redraw 8,12,14,16", "a end 8,12,14,16"}));
    EXPECT_EQ(screen().at(13 * kWidth + 11), WindowScene::kColourA);
}

TEST_F(WindowX11Test, TimersRunAtTheHostsIdleCallsUntilTheWindowCloses)
{
    sys::ClockPin clock(sys::get_clock_s() + 50.0);
    std::uint32_t id = 0;
    ASSERT_EQ(scene.a.handle_message(SetTimer(&scene.a, 0.03f, id)), 0);
    const std::string fired = "a notify " + std::to_string(id);
    const auto count = [&] { return std::count(scene.log.begin(), scene.log.end(), fired); };
    window.idle();
    EXPECT_EQ(count(), 1);
    clock.advance(0.03);
    window.idle();
    EXPECT_EQ(count(), 2);
    window.close();
    EXPECT_FALSE(window.use_timers().is_active(id));
}

class MenuX11Test : public WindowX11Test
{
protected:
    void SetUp() override
    {
        WindowX11Test::SetUp();
        MenuList& root = menu.use_root();
        root.add(std::make_unique<MenuItem>("One", &action));
        root.add(std::make_unique<MenuDelimiter>());
        root.add(std::make_unique<MenuItem>("Bound to CC 74")).set_disabled(true);
        root.add(std::make_unique<MenuItem>("Two", &action));
        root.add(std::make_unique<MenuList>("Sub")).add(std::make_unique<MenuItem>("Deep", &action));
    }

    // The menu of b, opened with the pointer over b.
    void show()
    {
        host.move(55, 35);
        ASSERT_TRUE(idle_until([&] { return !scene.log.empty(); }));
        ASSERT_EQ(scene.b.handle_message(MenuRequest(&menu, 0, 0)), 0);
        ASSERT_TRUE(window.use_menu().is_shown());
        // Its first drawing is there once it answers.
        idle_for(20);
    }

    Menu menu;
    gadu_test::RecordingAction action{scene.log};
};

TEST_F(MenuX11Test, KeysEnterAndLeaveSubmenusSkipWhatCannotBeChosenAndChoose)
{
    show();
    scene.log.clear();
    host.tap(XK_Up);
    host.tap(XK_Right);
    ASSERT_TRUE(idle_until([&] { return window.use_menu().use_layout().use_rows().size() == 1; }));
    host.tap(XK_Escape);
    ASSERT_TRUE(idle_until([&] { return window.use_menu().use_layout().use_rows().size() == 5; }));
    host.tap(XK_Escape);
    ASSERT_TRUE(idle_until([&] { return !window.use_menu().is_shown(); }));

    show();
    // Down to "One", over the separator and the grayed line to "Two".
    host.tap(XK_Down);
    host.tap(XK_Down);
    host.tap(XK_Return);
    ASSERT_TRUE(idle_until([&] { return logged("chose Two"); }));
    EXPECT_FALSE(window.use_menu().is_shown());
    // The escape from the submenu chose nothing.
    const auto chosen = [](const std::string& line) { return line.rfind("chose", 0) == 0; };
    EXPECT_EQ(std::count_if(scene.log.begin(), scene.log.end(), chosen), 1);
}

TEST_F(MenuX11Test, AClickOnAnEntryChoosesAClickOutsideOrClosingTheEditorCloses)
{
    show();
    // The menu opens at the pointer: its first row lies just below it.
    XWindowAttributes where{};
    XGetWindowAttributes(host.display, window.use_menu().use_handle(), &where);
    const auto& first = window.use_menu().use_layout().use_rows().front();
    host.move(where.x + 30, where.y + (first.y1 + first.y2) / 2);
    host.click(Button1);
    ASSERT_TRUE(idle_until([&] { return logged("chose One"); }));

    show();
    scene.log.clear();
    host.move(280, 230);
    host.click(Button1);
    ASSERT_TRUE(idle_until([&] { return !window.use_menu().is_shown(); }));
    EXPECT_FALSE(logged("chose One"));

    show();
    const Window shown = window.use_menu().use_handle();
    const auto on_screen = [&] {
        const std::vector<Window> top = host.children_of(DefaultRootWindow(host.display));
        return std::find(top.begin(), top.end(), shown) != top.end();
    };
    ASSERT_TRUE(on_screen());
    window.close();
    EXPECT_FALSE(on_screen());
}

// --- failures and the window's life ---

TEST_F(WindowX11Test, NoDisplayOrNoHostWindowFailsTheOpenAndSaysWhy)
{
    window.close();
    EXPECT_EQ(window.open(reinterpret_cast<void*>(std::uintptr_t{0x5FFFFF})), -1);
    EXPECT_NE(window.get_error_text().find("host's window"), std::string::npos);
    EXPECT_EQ(window.use_handle(), 0u);
    EXPECT_EQ(scene.a.handle_message(Invalidate(Rect{0, 0, 5, 5})), -1);
    window.set_display_name(":9999");
    EXPECT_EQ(window.open(reinterpret_cast<void*>(static_cast<std::uintptr_t>(parent))), -1);
    EXPECT_NE(window.get_error_text().find("display"), std::string::npos);
    window.set_display_name(server.get_name());
    open();
}

TEST_F(WindowX11Test, AHostThatDestroysItsWindowFirstTakesOursAlong)
{
    scene.a.capture_mode = capture_mode::hidden;
    host.move(12, 12);
    host.button(Button1, true);
    ASSERT_TRUE(idle_until([&] { return scene.a.capture_result == 0; }));
    XDestroyWindow(host.display, parent);
    XSync(host.display, False);
    ASSERT_TRUE(idle_until([&] { return window.use_handle() == 0; }));
    EXPECT_TRUE(logged("a lost"));
    host.button(Button1, false);
    window.close();
    parent = host.make_window(300, 240);
    open();
}

// A server of its own, ended in the middle of the editor's life.
TEST(WindowX11ServerTest, AServerThatGoesAwayLeavesTheEditorClosableAndTheProcessAlive)
{
    gadu_test::VirtualDisplay doomed;
    ASSERT_FALSE(doomed.get_name().empty());
    Window parent = 0;
    {
        HostX11 host(doomed.get_name());
        parent = host.make_window(200, 200);
        XSetCloseDownMode(host.display, RetainPermanent);
    }
    WindowScene scene;
    WindowX11 window;
    scene.attach(window);
    window.set_display_name(doomed.get_name());
    ASSERT_EQ(window.open(reinterpret_cast<void*>(static_cast<std::uintptr_t>(parent))), 0);
    window.idle();
    std::uint32_t id = 0;
    scene.a.handle_message(SetTimer(&scene.a, 0.01f, id));
    doomed.end();
    for (int i = 0; i < 5; ++i)
    {
        window.idle();
        scene.a.request_redraw();
    }
    window.close();
    EXPECT_EQ(window.use_handle(), 0u);
    // And a window on a living server opens as before.
    gadu_test::VirtualDisplay next;
    HostX11 host(next.get_name());
    window.set_display_name(next.get_name());
    ASSERT_EQ(window.open(reinterpret_cast<void*>(static_cast<std::uintptr_t>(host.make_window(200, 200)))), 0);
    window.close();
}

}  // namespace
}  // namespace gadu
