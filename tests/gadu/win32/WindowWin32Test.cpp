// The platform's side of the window: messages in, pixels, cursor and capture
// out. What the portable window logic makes of them (capture rules, endless
// drag timing, timer periods) is checked with the off-screen window.
#include "sys/Clock.h"
#include "sys/ClockPin.h"

#include "tests/gadu/win32/HostWindowWin32.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <cfenv>
#include <utility>

namespace gadu
{
namespace
{

using gadu_test::Log;
using gadu_test::ProbeControl;
using gadu_test::at;
using gadu_test::pump;
using Scene = gadu_test::WindowScene;

constexpr std::int32_t kWidth = Scene::kLarge.width;
constexpr std::int32_t kHeight = Scene::kLarge.height;

POINT cursor()
{
    POINT p = {};
    ::GetCursorPos(&p);
    return p;
}

// ShowCursor only tells the display count by changing it: change it and back.
int cursor_count()
{
    const int count = ::ShowCursor(TRUE) - 1;
    ::ShowCursor(FALSE);
    return count;
}

// The large scene: a background of 8 x 8 squares, a at (10, 10), b at (50, 30).
class WindowWin32Test : public gadu_test::SceneWindowWin32Test
{
};

TEST_F(WindowWin32Test, OpensAsChildOfTheHostWindowAndShowsTheScene)
{
    EXPECT_EQ(::GetParent(hwnd), parent);
    EXPECT_EQ(::GetWindowLongA(hwnd, GWL_STYLE) & (WS_CHILD | WS_VISIBLE), WS_CHILD | WS_VISIBLE);
    char text[64] = {};
    ::GetWindowTextA(hwnd, text, sizeof(text));
    EXPECT_STREQ(text, "Velnor Audio Plug-in");
    // The class name carries a number of the module's own, so that two copies
    // of the plug-in never share a class.
    ::GetClassNameA(hwnd, text, sizeof(text));
    EXPECT_STREQ(text, WindowWin32::get_class_name());
    EXPECT_EQ(std::string(text).rfind("VelnorAudioPlugin", 0), 0u);
    EXPECT_EQ(std::string(text).size(), std::string("VelnorAudioPlugin").size() + 8);
    EXPECT_EQ(client_size(), std::make_pair(LONG{kWidth}, LONG{kHeight}));
    const std::vector<std::uint32_t> shown = gadu_test::capture(hwnd, kWidth, kHeight);
    EXPECT_EQ(scene.count_wrong([&](int x, int y) { return shown[static_cast<std::size_t>(y * kWidth + x)]; }), 0);
}

TEST_F(WindowWin32Test, ButtonsAndTheWheelReachTheControlUnderThePoint)
{
    send(WM_LBUTTONDOWN, MK_LBUTTON, 15, 12);
    send(WM_LBUTTONUP, 0, 15, 12);
    send(WM_LBUTTONDBLCLK, MK_LBUTTON, 15, 12);
    send(WM_RBUTTONDOWN, MK_RBUTTON | MK_SHIFT | MK_CONTROL, 55, 35);
    send(WM_MBUTTONDBLCLK, MK_MBUTTON, 55, 35);
    // Outside both controls nobody hears of it.
    send(WM_LBUTTONDOWN, MK_LBUTTON, 80, 5);
    ::PostMessageA(hwnd, WM_LBUTTONUP, 0, at(12, 11));
    pump(20);
    // The wheel's position is on the screen; one notch is 120.
    const POINT p = on_screen(55, 35);
    ::SendMessageA(hwnd, WM_MOUSEWHEEL, MAKEWPARAM(0, 120), MAKELPARAM(p.x, p.y));
    ::SendMessageA(hwnd, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-240)), MAKELPARAM(p.x, p.y));
    EXPECT_EQ(scene.log, (Log{"a highlight", "a click 15,12 b1 d0", "a click 15,12 b0 d0", "a highlight",
                              "a click 15,12 b1 d1", "b highlight", "b click 55,35 b2 d0 m3", "b highlight",
                              "b click 55,35 b4 d4", "a click 12,11 b0 d0", "b wheel 1.000000",
                              "b wheel -2.000000"}));
}

TEST_F(WindowWin32Test, TheCaptureFollowsItsControlsAndItsLossIsTold)
{
    scene.a.capture_mode = capture_mode::plain;
    send(WM_LBUTTONDOWN, MK_LBUTTON, 12, 12);
    EXPECT_EQ(::GetCapture(), hwnd);
    send(WM_MOUSEMOVE, MK_LBUTTON, 70, -5);
    // Handed to another control, the window keeps the platform's capture, and
    // only the first control hears of a loss.
    EXPECT_EQ(scene.b.handle_message(MouseCapture(&scene.b, capture_mode::plain)), 0);
    EXPECT_EQ(::GetCapture(), hwnd);
    send(WM_MOUSEMOVE, MK_LBUTTON, 1, 2);
    EXPECT_EQ(scene.b.handle_message(MouseRelease(&scene.b)), 0);
    EXPECT_EQ(::GetCapture(), nullptr);
    EXPECT_EQ(scene.log, (Log{"a highlight", "a click 12,12 b1 d0", "a move 70,-5", "a lost", "b move 1,2",
                              "b lost"}));

    // Another window takes the mouse from a hidden capture: the control hears
    // of it and the cursor comes back.
    const int shown = cursor_count();
    scene.b.capture_mode = capture_mode::hidden;
    send(WM_LBUTTONDOWN, MK_LBUTTON, 52, 32);
    EXPECT_EQ(cursor_count(), shown - 1);
    ::SetCapture(parent);
    EXPECT_EQ(cursor_count(), shown);
    EXPECT_EQ(scene.log.back(), "b lost");
    ::ReleaseCapture();
}

TEST_F(WindowWin32Test, EndlessDragHidesTheCursorDeliversMotionAndWarpsBack)
{
    sys::ClockPin clock(sys::get_clock_s() + 100.0);
    const int shown = cursor_count();
    const POINT press = on_screen(20, 20);
    ::SetCursorPos(press.x, press.y);
    scene.a.capture_mode = capture_mode::relative;
    send(WM_LBUTTONDOWN, MK_LBUTTON, 20, 20);
    EXPECT_EQ(cursor_count(), shown - 1);
    clock.advance(0.3);
    send(WM_MOUSEMOVE, MK_LBUTTON, 20, 900);
    EXPECT_EQ(cursor().x, press.x);
    EXPECT_EQ(cursor().y, press.y);
    send(WM_MOUSEMOVE, MK_LBUTTON, 23, 16);
    send(WM_LBUTTONUP, 0, 23, 16);
    EXPECT_EQ(cursor_count(), shown);
    EXPECT_EQ(scene.log, (Log{"a highlight", "a click 20,20 b1 d0", "a move 0,880", "a move 3,-4",
                              "a click 0,0 b0 d0", "a lost"}));
}

TEST_F(WindowWin32Test, AtZoomTwoEveryPixelIsABlockAndPositionsAreHalved)
{
    window.set_zoom(Zoom(2));
    reopen();
    const std::vector<std::uint32_t> shown = gadu_test::capture(hwnd, 2 * kWidth, 2 * kHeight);
    EXPECT_EQ(scene.count_wrong([&](int x, int y) { return shown[static_cast<std::size_t>(y * 2 * kWidth + x)]; },
                                2),
              0);
    send(WM_LBUTTONDOWN, MK_LBUTTON, 31, 25);
    EXPECT_EQ(scene.log.back(), "a click 15,12 b1 d0");
}

TEST_F(WindowWin32Test, InvalidateRepaintsOnlyTheClippedRegion)
{
    EXPECT_EQ(scene.b.handle_message(Invalidate(Rect{40, 40, 200, 300})), 0);
    RECT update = {};
    ASSERT_TRUE(::GetUpdateRect(hwnd, &update, FALSE));
    EXPECT_EQ(update.left, 40);
    EXPECT_EQ(update.bottom, kHeight);
    ::UpdateWindow(hwnd);
    EXPECT_EQ(scene.log, (Log{"b begin 40,40,96,64", "b redraw 40,40,96,64", "b end 40,40,96,64"}));
}

TEST_F(WindowWin32Test, TimersRunFromThePlatformTimer)
{
    // Ahead of the real clock, which the window's first paint ran the timers by.
    sys::ClockPin clock(sys::get_clock_s() + 50.0);
    std::uint32_t id = 0;
    ASSERT_EQ(scene.a.handle_message(SetTimer(&scene.a, 0.03f, id)), 0);
    auto notified = [&] { return std::count(scene.log.begin(), scene.log.end(), "a notify " + std::to_string(id)); };
    pump(60);
    EXPECT_EQ(notified(), 1);
    clock.advance(0.03);
    pump(60);
    EXPECT_EQ(notified(), 2);
    scene.a.handle_message(ClearTimer(id));
    clock.advance(1.0);
    pump(60);
    EXPECT_EQ(notified(), 2);
}

TEST_F(WindowWin32Test, AFixedWindowFillsTheAreaOutsideTheContent)
{
    window.set_resizable(false);
    window.set_window_size(kWidth + 20, kHeight + 10);
    reopen();
    const std::vector<std::uint32_t> shown = gadu_test::capture(hwnd, kWidth + 20, kHeight + 10);
    const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
    const std::uint32_t expected = (GetRValue(face) << 16) | (GetGValue(face) << 8) | GetBValue(face);
    const std::pair<int, int> outside[] = {
        {kWidth + 19, 0}, {kWidth, kHeight - 1}, {0, kHeight}, {kWidth + 19, kHeight + 9}};
    for (const auto& [x, y] : outside)
    {
        EXPECT_EQ(shown[static_cast<std::size_t>(y * (kWidth + 20) + x)], expected) << x << "," << y;
    }
    EXPECT_EQ(shown[static_cast<std::size_t>(15 * (kWidth + 20) + 15)], Scene::kColourA);
}

TEST_F(WindowWin32Test, ResizeFollowsTheContentOnlyWhenTheHostCanResize)
{
    window.set_resizable(true);
    window.set_window_size(200, 200);
    reopen();
    EXPECT_EQ(client_size(), std::make_pair(LONG{kWidth}, LONG{kHeight}));
    window.set_content_size(80, 50);
    window.resize();
    EXPECT_EQ(client_size(), std::make_pair(LONG{80}, LONG{50}));

    window.set_resizable(false);
    window.set_content_size(kWidth, kHeight);
    ::ValidateRect(hwnd, nullptr);
    window.resize();
    EXPECT_EQ(client_size(), std::make_pair(LONG{80}, LONG{50}));
    RECT update = {};
    ASSERT_TRUE(::GetUpdateRect(hwnd, &update, FALSE));
    EXPECT_EQ(update.right, 80);
    EXPECT_EQ(update.bottom, 50);
}

TEST_F(WindowWin32Test, TheMessageFilterSeesEveryMessageFirst)
{
    int filtered = 0;
    window.set_message_filter([&](HWND, UINT message, WPARAM, LPARAM, LRESULT& result) {
        filtered += message == WM_LBUTTONDOWN;
        result = 7;
        return message == WM_LBUTTONDOWN;
    });
    EXPECT_EQ(send(WM_LBUTTONDOWN, MK_LBUTTON, 15, 12), 7);
    send(WM_LBUTTONUP, 0, 15, 12);
    EXPECT_EQ(filtered, 1);
    EXPECT_EQ(scene.log, Log{"a click 15,12 b0 d0"});
}

// The host's message loop may run with any rounding; the toolkit must see
// round to nearest, and the host must get its own mode back.
class RoundingProbe : public ProbeControl
{
public:
    using ProbeControl::ProbeControl;
    std::int32_t on_mouse_click(const MouseClick& m) override
    {
        seen = std::fegetround();
        return ProbeControl::on_mouse_click(m);
    }
    std::int32_t on_notify(const Notify& m) override
    {
        seen_in_timer = std::fegetround();
        return ProbeControl::on_notify(m);
    }
    int seen = -1;
    int seen_in_timer = -1;
};

TEST_F(WindowWin32Test, PlatformEntriesRunWithRoundToNearestAndRestoreTheHostsMode)
{
    Log log;
    RoundingProbe probe("r", log, Rect{0, 0, 5, 5});
    probe.set_position(80, 50);
    scene.controls.add_control(probe);
    std::uint32_t id = 0;
    probe.handle_message(SetTimer(&probe, 0.0f, id));
    const int host = std::fegetround();
    std::fesetround(FE_TOWARDZERO);
    send(WM_LBUTTONDOWN, MK_LBUTTON, 81, 51);
    const int after = std::fegetround();
    // The same for the platform timer's callback, which the host's loop calls.
    pump(40);
    const int after_timer = std::fegetround();
    std::fesetround(host);
    EXPECT_EQ(probe.seen, FE_TONEAREST);
    EXPECT_EQ(after, FE_TOWARDZERO);
    EXPECT_EQ(probe.seen_in_timer, FE_TONEAREST);
    EXPECT_EQ(after_timer, FE_TOWARDZERO);
    probe.handle_message(ClearTimer(id));
}

}  // namespace
}  // namespace gadu
