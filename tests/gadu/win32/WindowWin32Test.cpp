#include "gadu/CtrlGroupItem.h"
#include "gadu/Menu.h"
#include "gadu/MenuDelimiter.h"
#include "gadu/MenuItem.h"
#include "gadu/MenuActionInterface.h"
#include "gadu/MenuRequest.h"
#include "gadu/OffscreenWindow.h"
#include "gadu/ShowObject.h"
#include "gadu/TextInputRequest.h"
#include "gadu/win32/WindowWin32.h"
#include "sys/Clock.h"
#include "sys/ClockPin.h"
#include "sys/FpuModeGuard.h"

#include "tests/gadu/ProbeControl.h"
#include "tests/gadu/WindowScene.h"
#include "tests/gadu/win32/HostWindowWin32.h"
#include "tests/gadu/win32/WindowCaptureWin32.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <cfenv>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>

namespace gadu
{
namespace
{

using gadu_test::Log;
using gadu_test::ProbeControl;
using gadu_test::at;
using gadu_test::capture;
using gadu_test::pump;
using gadu_test::save_for_viewing;

constexpr std::int32_t kWidth = gadu_test::WindowScene::kLarge.width;
constexpr std::int32_t kHeight = gadu_test::WindowScene::kLarge.height;
constexpr std::uint32_t kColourA = gadu_test::WindowScene::kColourA;
constexpr std::uint32_t kColourB = gadu_test::WindowScene::kColourB;

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
using Scene = gadu_test::WindowScene;

class WindowWin32Test : public ::testing::Test
{
protected:
    // One host window for all: making a top-level window costs wine a while.
    static void SetUpTestSuite() { parent = gadu_test::make_host_window(); }
    static void TearDownTestSuite() { ::DestroyWindow(parent); }

    void SetUp() override
    {
        ASSERT_NE(parent, nullptr);
        scene.attach(window);
        ASSERT_EQ(window.open(parent), 0) << window.get_error_text();
        hwnd = window.use_handle();
        ASSERT_NE(hwnd, nullptr);
        ::UpdateWindow(hwnd);
        scene.log.clear();
    }

    void TearDown() override
    {
        window.close();
    }

    // Where a window pixel lies on the screen.
    POINT on_screen(std::int32_t x, std::int32_t y) const
    {
        RECT frame = {};
        ::GetWindowRect(hwnd, &frame);
        return POINT{frame.left + x, frame.top + y};
    }

    static inline HWND parent = nullptr;
    Scene scene;
    WindowWin32 window;
    HWND hwnd = nullptr;
};

TEST_F(WindowWin32Test, OpensAsChildOfTheHostWindowWithItsTitleAndClass)
{
    EXPECT_EQ(::GetParent(hwnd), parent);
    EXPECT_EQ(window.use_parent(), parent);
    EXPECT_EQ(::GetWindowLongA(hwnd, GWL_STYLE) & (WS_CHILD | WS_VISIBLE), WS_CHILD | WS_VISIBLE);
    char text[64] = {};
    ::GetWindowTextA(hwnd, text, sizeof(text));
    EXPECT_STREQ(text, "Velnor Audio Plug-in");
    ::GetClassNameA(hwnd, text, sizeof(text));
    EXPECT_STREQ(text, WindowWin32::get_class_name());
    EXPECT_EQ(std::string(text).rfind("VelnorAudioPlugin", 0), 0u);
    EXPECT_EQ(std::string(text).size(), std::string("VelnorAudioPlugin").size() + 8);
    RECT client = {};
    ::GetClientRect(hwnd, &client);
    EXPECT_EQ(client.right, kWidth);
    EXPECT_EQ(client.bottom, kHeight);
}

TEST_F(WindowWin32Test, ButtonMessagesReachTheControlUnderThePoint)
{
    ::SendMessageA(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, at(15, 12));
    ::SendMessageA(hwnd, WM_LBUTTONUP, 0, at(15, 12));
    ::SendMessageA(hwnd, WM_LBUTTONDBLCLK, MK_LBUTTON, at(15, 12));
    ::SendMessageA(hwnd, WM_RBUTTONDOWN, MK_RBUTTON | MK_SHIFT, at(55, 35));
    ::SendMessageA(hwnd, WM_MBUTTONDBLCLK, MK_MBUTTON, at(55, 35));
    // Outside both controls nobody hears of it.
    ::SendMessageA(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, at(80, 5));
    ::PostMessageA(hwnd, WM_LBUTTONUP, 0, at(12, 11));
    pump(20);
    EXPECT_EQ(scene.log, (Log{"a highlight", "a click 15,12 b1 d0", "a click 15,12 b0 d0", "a highlight",
                              "a click 15,12 b1 d1", "b highlight", "b click 55,35 b2 d0", "b highlight",
                              "b click 55,35 b4 d4", "a click 12,11 b0 d0"}));
}

TEST_F(WindowWin32Test, WheelPositionComesFromTheScreenAndOneNotchIsOne)
{
    const POINT p = on_screen(55, 35);
    ::SendMessageA(hwnd, WM_MOUSEWHEEL, MAKEWPARAM(0, 120), MAKELPARAM(p.x, p.y));
    ::SendMessageA(hwnd, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-240)), MAKELPARAM(p.x, p.y));
    EXPECT_EQ(scene.log, (Log{"b wheel 1.000000", "b wheel -2.000000"}));
}

TEST_F(WindowWin32Test, MovesGoToTheCapturingControlEvenOutsideIt)
{
    scene.a.capture_mode = capture_mode::plain;
    ::SendMessageA(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, at(12, 12));
    EXPECT_EQ(scene.a.capture_result, 0);
    EXPECT_EQ(::GetCapture(), hwnd);
    ::SendMessageA(hwnd, WM_MOUSEMOVE, MK_LBUTTON, at(70, -5));
    ::SendMessageA(hwnd, WM_LBUTTONUP, 0, at(70, -5));
    EXPECT_EQ(scene.a.release_result, 0);
    EXPECT_EQ(::GetCapture(), nullptr);
    EXPECT_EQ(scene.log, (Log{"a highlight", "a click 12,12 b1 d0", "a move 70,-5", "a click 70,-5 b0 d0",
                              "a lost"}));
}

TEST_F(WindowWin32Test, HandingTheCaptureToAnotherControlTellsTheFirstOnce)
{
    scene.a.capture_mode = capture_mode::plain;
    ::SendMessageA(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, at(12, 12));
    scene.log.clear();
    // The window already holds the platform's capture and takes it again.
    EXPECT_EQ(scene.b.handle_message(MouseCapture(&scene.b, capture_mode::plain)), 0);
    EXPECT_EQ(::GetCapture(), hwnd);
    ::SendMessageA(hwnd, WM_MOUSEMOVE, MK_LBUTTON, at(1, 2));
    EXPECT_EQ(scene.log, (Log{"a lost", "b move 1,2"}));
    EXPECT_EQ(scene.a.handle_message(MouseRelease(&scene.a)), -1);
    EXPECT_EQ(scene.b.handle_message(MouseRelease(&scene.b)), 0);
}

TEST_F(WindowWin32Test, EndlessDragHidesTheCursorDeliversMotionAndWarpsBack)
{
    sys::ClockPin clock(sys::get_clock_s() + 100.0);
    const int shown = cursor_count();
    const POINT press = on_screen(20, 20);
    ::SetCursorPos(press.x, press.y);
    scene.a.capture_mode = capture_mode::relative;
    ::SendMessageA(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, at(20, 20));
    EXPECT_EQ(cursor_count(), shown - 1);

    // Early in the drag the cursor stays where the user moved it.
    clock.advance(0.1);
    ::SetCursorPos(press.x, press.y + 30);
    ::SendMessageA(hwnd, WM_MOUSEMOVE, MK_LBUTTON, at(20, 50));
    EXPECT_EQ(cursor().y, press.y + 30);
    // From 250 ms on it goes back to the press point, however far it went.
    clock.advance(0.2);
    ::SendMessageA(hwnd, WM_MOUSEMOVE, MK_LBUTTON, at(20, 900));
    EXPECT_EQ(cursor().x, press.x);
    EXPECT_EQ(cursor().y, press.y);
    ::SendMessageA(hwnd, WM_MOUSEMOVE, MK_LBUTTON, at(23, 16));
    ::SendMessageA(hwnd, WM_LBUTTONUP, 0, at(23, 16));
    EXPECT_EQ(cursor_count(), shown);
    EXPECT_EQ(scene.log, (Log{"a highlight", "a click 20,20 b1 d0", "a move 0,30", "a move 0,850", "a move 3,-4",
                              "a click 0,0 b0 d0", "a lost"}));
}

TEST_F(WindowWin32Test, QuickReleaseOfAnEndlessDragLeavesTheCursorAlone)
{
    sys::ClockPin clock(sys::get_clock_s() + 100.0);
    const POINT press = on_screen(20, 20);
    ::SetCursorPos(press.x, press.y);
    scene.a.capture_mode = capture_mode::relative;
    ::SendMessageA(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, at(20, 20));
    clock.advance(0.2);
    ::SetCursorPos(press.x + 7, press.y + 9);
    ::SendMessageA(hwnd, WM_LBUTTONUP, 0, at(27, 29));
    EXPECT_EQ(cursor().x, press.x + 7);
    EXPECT_EQ(cursor().y, press.y + 9);
    EXPECT_EQ(::GetCapture(), nullptr);
}

TEST_F(WindowWin32Test, ACaptureTakenAwayTellsTheControlAndShowsTheCursor)
{
    const int shown = cursor_count();
    scene.b.capture_mode = capture_mode::hidden;
    ::SendMessageA(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, at(52, 32));
    EXPECT_EQ(cursor_count(), shown - 1);
    ::SetCapture(parent);
    EXPECT_EQ(cursor_count(), shown);
    EXPECT_EQ(scene.log.back(), "b lost");
    ::ReleaseCapture();
    // With nobody capturing, moves go by position again.
    scene.log.clear();
    ::SendMessageA(hwnd, WM_MOUSEMOVE, 0, at(12, 12));
    EXPECT_EQ(scene.log, Log{"a move 12,12"});
}

TEST_F(WindowWin32Test, PaintShowsWhatTheOffscreenWindowDraws)
{
    Scene reference;
    OffscreenWindow offscreen(kWidth, kHeight);
    reference.attach(offscreen);
    offscreen.open(nullptr);
    offscreen.paint_all();

    ::InvalidateRect(hwnd, nullptr, FALSE);
    ::UpdateWindow(hwnd);
    const std::vector<std::uint32_t> shown = capture(hwnd, kWidth, kHeight);
    save_for_viewing("window", shown, kWidth, kHeight);
    std::int32_t differing = 0;
    for (std::int32_t y = 0; y < kHeight; ++y)
    {
        for (std::int32_t x = 0; x < kWidth; ++x)
        {
            differing += shown[static_cast<std::size_t>(y * kWidth + x)] !=
                         (offscreen.use_screen()->get_pixel(x, y) & 0xFFFFFFu);
        }
    }
    EXPECT_EQ(differing, 0);
    EXPECT_EQ(shown[static_cast<std::size_t>(15 * kWidth + 15)], kColourA);
    EXPECT_EQ(shown[static_cast<std::size_t>(35 * kWidth + 55)], kColourB);
}

TEST_F(WindowWin32Test, AtZoomTwoEveryPixelIsABlockAndPositionsAreHalved)
{
    window.close();
    window.set_zoom(Zoom(2));
    ASSERT_EQ(window.open(parent), 0);
    hwnd = window.use_handle();
    ::UpdateWindow(hwnd);
    const std::vector<std::uint32_t> shown = capture(hwnd, 2 * kWidth, 2 * kHeight);
    save_for_viewing("zoomed-window", shown, 2 * kWidth, 2 * kHeight);
    std::int32_t differing = 0;
    for (std::int32_t y = 0; y < 2 * kHeight; ++y)
    {
        for (std::int32_t x = 0; x < 2 * kWidth; ++x)
        {
            differing += shown[static_cast<std::size_t>(y * 2 * kWidth + x)] != scene.expected_at(x / 2, y / 2);
        }
    }
    EXPECT_EQ(differing, 0);
    scene.log.clear();
    ::SendMessageA(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, at(31, 25));
    EXPECT_EQ(scene.log.back(), "a click 15,12 b1 d0");
}

TEST_F(WindowWin32Test, InvalidateRepaintsOnlyTheClippedRegion)
{
    scene.log.clear();
    EXPECT_EQ(scene.b.handle_message(Invalidate(Rect{40, 40, 200, 300})), 0);
    RECT update = {};
    ASSERT_TRUE(::GetUpdateRect(hwnd, &update, FALSE));
    EXPECT_EQ(update.left, 40);
    EXPECT_EQ(update.bottom, kHeight);
    ::UpdateWindow(hwnd);
    EXPECT_EQ(scene.log, (Log{"b begin 40,40,96,64", "b redraw 40,40,96,64", "b end 40,40,96,64"}));
}

TEST_F(WindowWin32Test, TimersRunFromThePlatformTimerAtTheirPeriod)
{
    // Ahead of the real clock, which the window's first paint ran the timers by.
    sys::ClockPin clock(sys::get_clock_s() + 50.0);
    std::uint32_t id = 0;
    ASSERT_EQ(scene.a.handle_message(SetTimer(&scene.a, 0.03f, id)), 0);
    auto notified = [&] { return std::count(scene.log.begin(), scene.log.end(), "a notify " + std::to_string(id)); };
    // A new timer fires at the first run; while the clock stands still no run
    // fires anything more, however often the platform timer ticks.
    pump(60);
    EXPECT_EQ(notified(), 1);
    clock.advance(0.02);
    pump(60);
    EXPECT_EQ(notified(), 1);
    clock.advance(0.01);
    pump(60);
    EXPECT_EQ(notified(), 2);
    scene.a.handle_message(ClearTimer(id));
    clock.advance(1.0);
    pump(60);
    EXPECT_EQ(notified(), 2);
}

TEST_F(WindowWin32Test, FixedWindowFillsTheAreaOutsideTheContent)
{
    window.close();
    window.set_resizable(false);
    window.set_window_size(kWidth + 20, kHeight + 10);
    ASSERT_EQ(window.open(parent), 0);
    hwnd = window.use_handle();
    ::UpdateWindow(hwnd);
    const std::vector<std::uint32_t> shown = capture(hwnd, kWidth + 20, kHeight + 10);
    save_for_viewing("fixed-window", shown, kWidth + 20, kHeight + 10);
    const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
    const std::uint32_t expected = (GetRValue(face) << 16) | (GetGValue(face) << 8) | GetBValue(face);
    const auto pixel = [&](std::int32_t x, std::int32_t y) {
        return shown[static_cast<std::size_t>(y * (kWidth + 20) + x)];
    };
    EXPECT_EQ(pixel(kWidth + 19, 0), expected);
    EXPECT_EQ(pixel(kWidth, kHeight - 1), expected);
    EXPECT_EQ(pixel(0, kHeight), expected);
    EXPECT_EQ(pixel(kWidth + 19, kHeight + 9), expected);
    EXPECT_EQ(pixel(15, 15), kColourA);
}

TEST_F(WindowWin32Test, ResizeFollowsTheContentOnlyWhenTheHostCanResize)
{
    const auto client_size = [&] {
        RECT client = {};
        ::GetClientRect(hwnd, &client);
        return std::make_pair(client.right, client.bottom);
    };
    window.close();
    window.set_resizable(true);
    window.set_window_size(200, 200);
    ASSERT_EQ(window.open(parent), 0);
    hwnd = window.use_handle();
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
        if (message != WM_LBUTTONDOWN)
        {
            return false;
        }
        ++filtered;
        result = 7;
        return true;
    });
    EXPECT_EQ(::SendMessageA(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, at(15, 12)), 7);
    ::SendMessageA(hwnd, WM_LBUTTONUP, 0, at(15, 12));
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
    const int host = std::fegetround();
    std::fesetround(FE_TOWARDZERO);
    ::SendMessageA(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, at(81, 51));
    const int after = std::fegetround();
    std::fesetround(host);
    EXPECT_EQ(probe.seen, FE_TONEAREST);
    EXPECT_EQ(after, FE_TOWARDZERO);

    // The same for the platform timer's callback, which the host's loop calls.
    std::uint32_t id = 0;
    probe.handle_message(SetTimer(&probe, 0.0f, id));
    std::fesetround(FE_TOWARDZERO);
    pump(40);
    const int after_timer = std::fegetround();
    std::fesetround(host);
    EXPECT_EQ(probe.seen_in_timer, FE_TONEAREST);
    EXPECT_EQ(after_timer, FE_TOWARDZERO);
    probe.handle_message(ClearTimer(id));
}

}  // namespace
}  // namespace gadu
