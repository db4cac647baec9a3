#include "gadu/BackgroundItem.h"
#include "gadu/CtrlGroupItem.h"
#include "gadu/Menu.h"
#include "gadu/MenuDelimiter.h"
#include "gadu/MenuItem.h"
#include "gadu/MenuActionInterface.h"
#include "gadu/MenuRequest.h"
#include "gadu/OffscreenWindow.h"
#include "gadu/PicDataFactory.h"
#include "gadu/ShowObject.h"
#include "gadu/TextInputRequest.h"
#include "gadu/win32/WindowWin32.h"
#include "sys/Clock.h"
#include "sys/ClockPin.h"
#include "sys/FpuModeGuard.h"

#include "tests/gadu/ApicImage.h"
#include "tests/gadu/ProbeControl.h"
#include "tests/gadu/win32/HostWindowWin32.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <cfenv>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace gadu
{
namespace
{

using gadu_test::Log;
using gadu_test::ProbeControl;
using gadu_test::at;
using gadu_test::pump;

constexpr std::int32_t kWidth = 96;
constexpr std::int32_t kHeight = 64;
constexpr std::uint32_t kColourA = 0xC02040u;
constexpr std::uint32_t kColourB = 0x20C040u;

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

// A background of 8 x 8 squares and two probes: a at (10, 10), b at (50, 30).
struct Scene
{
    Scene()
    {
        std::vector<std::uint8_t> pixels;
        for (int y = 0; y < kHeight; ++y)
        {
            for (int x = 0; x < kWidth; ++x)
            {
                pixels.push_back(static_cast<std::uint8_t>((x / 8 + y / 8) % 2));
            }
        }
        bytes = gadu_test::make_apic(0, 8, kWidth, kHeight, {0x102030u, 0x405060u}, pixels);
        pic = PicDataFactory::use_instance().create_from_bytes(bytes.data(), bytes.size());
        background.set_picture(Picture(pic.get()));
        background.set_position(0, 0);
        a.set_position(10, 10);
        b.set_position(50, 30);
        controls.add_control(a);
        controls.add_control(b);
        controls.set_position(0, 0);
    }

    void attach(WindowInterface& window)
    {
        window.set_content_size(kWidth, kHeight);
        window.set_window_size(kWidth, kHeight);
        window.set_background_root(&background);
        window.set_control_root(&controls);
        background.handle_message(ShowObject(true));
        controls.handle_message(ShowObject(true));
    }

    std::vector<std::uint8_t> bytes;
    std::unique_ptr<PicDataInterface> pic;
    BackgroundItem background;
    Log log;
    CtrlGroupItem controls;
    ProbeControl a{"a", log, Rect{0, 0, 20, 20}, kColourA};
    ProbeControl b{"b", log, Rect{0, 0, 16, 16}, kColourB};
};

// The window's pixels as the screen shows them, 0xRRGGBB, rows top down.
std::vector<std::uint32_t> capture(HWND window, std::int32_t width, std::int32_t height)
{
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    const HDC screen = ::GetDC(window);
    const HBITMAP section = ::CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HDC memory = ::CreateCompatibleDC(screen);
    const HGDIOBJ old = ::SelectObject(memory, section);
    ::BitBlt(memory, 0, 0, width, height, screen, 0, 0, SRCCOPY);
    ::GdiFlush();
    std::vector<std::uint32_t> pixels(static_cast<const std::uint32_t*>(bits),
                                      static_cast<const std::uint32_t*>(bits) + width * height);
    for (std::uint32_t& p : pixels)
    {
        p &= 0xFFFFFFu;
    }
    ::SelectObject(memory, old);
    ::DeleteDC(memory);
    ::DeleteObject(section);
    ::ReleaseDC(window, screen);
    return pixels;
}

// Writes the pixels as a 24-bit BMP where ZQ_GADU_CAPTURE_DIR asks for it, so
// that a person can look at what the window showed.
void save_for_viewing(const char* name, const std::vector<std::uint32_t>& pixels, std::int32_t width,
                      std::int32_t height)
{
    const char* dir = std::getenv("ZQ_GADU_CAPTURE_DIR");
    if (dir == nullptr)
    {
        return;
    }
    const std::string path = std::string(dir) + "/" + name + ".bmp";
    std::FILE* f = std::fopen(path.c_str(), "wb");
    ASSERT_NE(f, nullptr);
    const std::uint32_t row = static_cast<std::uint32_t>((width * 3 + 3) & ~3);
    const std::uint32_t size = 54 + row * static_cast<std::uint32_t>(height);
    std::uint8_t header[54] = {'B', 'M'};
    auto put32 = [&](int at, std::uint32_t v) {
        for (int i = 0; i < 4; ++i)
        {
            header[at + i] = static_cast<std::uint8_t>(v >> (8 * i));
        }
    };
    put32(2, size);
    put32(10, 54);
    put32(14, 40);
    put32(18, static_cast<std::uint32_t>(width));
    put32(22, static_cast<std::uint32_t>(height));
    put32(26, 1u | (24u << 16));
    std::fwrite(header, 1, sizeof(header), f);
    std::vector<std::uint8_t> line(row, 0);
    for (std::int32_t y = height - 1; y >= 0; --y)
    {
        for (std::int32_t x = 0; x < width; ++x)
        {
            const std::uint32_t p = pixels[static_cast<std::size_t>(y * width + x)];
            line[static_cast<std::size_t>(3 * x)] = static_cast<std::uint8_t>(p);
            line[static_cast<std::size_t>(3 * x + 1)] = static_cast<std::uint8_t>(p >> 8);
            line[static_cast<std::size_t>(3 * x + 2)] = static_cast<std::uint8_t>(p >> 16);
        }
        std::fwrite(line.data(), 1, line.size(), f);
    }
    std::fclose(f);
}

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
    int seen = -1;
};

TEST_F(WindowWin32Test, WindowProcedureRunsWithRoundToNearestAndRestoresTheHostsMode)
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
}

}  // namespace
}  // namespace gadu
