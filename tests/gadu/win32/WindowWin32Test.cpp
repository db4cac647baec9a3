// The platform's side of the window, its menus and its text fields: messages
// in, pixels, cursor and capture out. What the portable window logic makes of
// them (capture rules, endless drag timing, timer periods) is checked with the
// off-screen window.
#include "gadu/Menu.h"
#include "gadu/MenuDelimiter.h"
#include "gadu/MenuItem.h"
#include "gadu/MenuRequest.h"
#include "gadu/TextInputRequest.h"
#include "gadu/win32/MenuWin32.h"
#include "gadu/win32/PlatformWin32.h"
#include "gadu/win32/WindowWin32.h"
#include "sys/Clock.h"
#include "sys/ClockPin.h"

#include "tests/gadu/WindowScene.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cfenv>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace gadu
{
namespace
{

using gadu_test::Log;
using gadu_test::WindowScene;

// Runs the thread's messages for about this long, so that the system's timers
// and posted messages arrive.
void pump(DWORD ms)
{
    const DWORD end = ::GetTickCount() + ms;
    for (;;)
    {
        MSG msg;
        while (::PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
        {
            ::TranslateMessage(&msg);
            ::DispatchMessageA(&msg);
        }
        const auto left = static_cast<LONG>(end - ::GetTickCount());
        if (left <= 0)
        {
            return;
        }
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(left), QS_ALLINPUT);
    }
}

// The host's editor window: a visible top-level window.
HWND make_host_window()
{
    static const bool registered = [] {
        WNDCLASSEXA wc = {};
        wc.cbSize = sizeof(wc);
        wc.lpfnWndProc = &::DefWindowProcA;
        wc.hInstance = ::GetModuleHandleA(nullptr);
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
        wc.lpszClassName = "GaduTestHost";
        return ::RegisterClassExA(&wc) != 0;
    }();
    EXPECT_TRUE(registered);
    return ::CreateWindowExA(0, "GaduTestHost", "host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE, 40, 40,
                             300, 240, nullptr, nullptr, ::GetModuleHandleA(nullptr), nullptr);
}

// Whether this module has a window class of that name registered.
bool class_exists(const char* name)
{
    WNDCLASSEXA wc = {};
    wc.cbSize = sizeof(wc);
    return ::GetClassInfoExA(::GetModuleHandleA(nullptr), name, &wc) != 0;
}

// ShowCursor only tells the display count by changing it: change it and back.
int cursor_count()
{
    const int count = ::ShowCursor(TRUE) - 1;
    ::ShowCursor(FALSE);
    return count;
}

LPARAM at(int x, int y)
{
    return MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y));
}

// The window's pixels as the screen shows them, 0xRRGGBB, rows top down.
std::vector<std::uint32_t> capture(HWND window, std::int32_t width, std::int32_t height)
{
    void* bits = nullptr;
    const HDC screen = ::GetDC(window);
    const HBITMAP section = create_top_down_section_win32(screen, width, height, &bits);
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

// The large scene in a window of its own, open in one host window that all
// tests of a suite share (making a top-level window costs wine a while).
class WindowWin32Test : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { parent = make_host_window(); }
    static void TearDownTestSuite() { ::DestroyWindow(parent); }

    void SetUp() override
    {
        ASSERT_NE(parent, nullptr);
        scene.attach(window);
        reopen();
    }

    void TearDown() override { window.close(); }

    void reopen()
    {
        window.close();
        ASSERT_EQ(window.open(parent), 0) << window.get_error_text();
        hwnd = window.use_handle();
        ASSERT_NE(hwnd, nullptr);
        ::UpdateWindow(hwnd);
        scene.log.clear();
    }

    // Where a window pixel lies on the screen.
    POINT on_screen(std::int32_t x, std::int32_t y) const
    {
        RECT frame = {};
        ::GetWindowRect(hwnd, &frame);
        return POINT{frame.left + x, frame.top + y};
    }

    std::pair<LONG, LONG> client_size() const
    {
        RECT client = {};
        ::GetClientRect(hwnd, &client);
        return {client.right, client.bottom};
    }

    LRESULT send(UINT message, WPARAM word, std::int32_t x, std::int32_t y) const
    {
        return ::SendMessageA(hwnd, message, word, at(x, y));
    }

    static inline HWND parent = nullptr;
    WindowScene scene;
    WindowWin32 window;
    HWND hwnd = nullptr;
};

constexpr std::int32_t kWidth = WindowScene::kLarge.width;
constexpr std::int32_t kHeight = WindowScene::kLarge.height;

POINT cursor()
{
    POINT p = {};
    ::GetCursorPos(&p);
    return p;
}


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
    const std::vector<std::uint32_t> shown = capture(hwnd, kWidth, kHeight);
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
    const std::vector<std::uint32_t> shown = capture(hwnd, 2 * kWidth, 2 * kHeight);
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
}

TEST_F(WindowWin32Test, OnlyAResizableWindowFollowsTheContentAFixedOneFillsTheAreaAroundIt)
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
    // Not resized, but repainted.
    EXPECT_EQ(client_size(), std::make_pair(LONG{80}, LONG{50}));
    RECT update = {};
    EXPECT_TRUE(::GetUpdateRect(hwnd, &update, FALSE) && update.right == 80 && update.bottom == 50);
    window.set_window_size(kWidth + 20, kHeight + 10);
    reopen();
    const std::vector<std::uint32_t> shown = capture(hwnd, kWidth + 20, kHeight + 10);
    const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
    const std::uint32_t expected = (GetRValue(face) << 16) | (GetGValue(face) << 8) | GetBValue(face);
    for (const auto& [x, y] : {std::pair{kWidth + 19, 0}, {kWidth, kHeight - 1}, {0, kHeight}})
    {
        EXPECT_EQ(shown[static_cast<std::size_t>(y * (kWidth + 20) + x)], expected) << x << "," << y;
    }
    EXPECT_EQ(shown[static_cast<std::size_t>(15 * (kWidth + 20) + 15)], WindowScene::kColourA);
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
TEST_F(WindowWin32Test, PlatformEntriesRunWithRoundToNearestAndRestoreTheHostsMode)
{
    std::fesetround(FE_TOWARDZERO);
    send(WM_LBUTTONDOWN, MK_LBUTTON, 15, 12);
    const int after_click = std::fegetround();
    const int in_click = scene.a.rounding;
    // The same for the platform timer's callback, which the host's loop calls.
    std::uint32_t id = 0;
    scene.a.handle_message(SetTimer(&scene.a, 0.0f, id));
    scene.a.rounding = -1;
    pump(40);
    const int after_timer = std::fegetround();
    std::fesetround(FE_TONEAREST);
    EXPECT_EQ(in_click, FE_TONEAREST);
    EXPECT_EQ(after_click, FE_TOWARDZERO);
    EXPECT_EQ(scene.a.rounding, FE_TONEAREST);
    EXPECT_EQ(after_timer, FE_TOWARDZERO);
}

// --- menus ---

// The menu of a control, as a knob offers its MIDI choices.
class MenuWin32Test : public WindowWin32Test
{
protected:
    void SetUp() override
    {
        WindowWin32Test::SetUp();
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
    EXPECT_FALSE(class_exists("VelnorAudioPluginMenu"));
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

// --- text fields ---

// A text field that a asks for over the scene.
class TextLineEditorWin32Test : public WindowWin32Test
{
protected:
    HWND open_field(const std::string& text)
    {
        EXPECT_EQ(scene.a.handle_message(TextInputRequest(&scene.a, Rect{10, 20, 90, 40}, text)), 0);
        return ::FindWindowExA(hwnd, nullptr, "EDIT", nullptr);
    }

    static std::string text_of(HWND field)
    {
        char text[64] = {};
        ::GetWindowTextA(field, text, sizeof(text));
        return text;
    }
};

TEST_F(TextLineEditorWin32Test, OpensOverTheRectangleWithTheTextSelectedAndFocused)
{
    const HWND field = open_field("hello");
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(text_of(field), "hello");
    EXPECT_EQ(::GetFocus(), field);
    RECT r = {};
    ::GetWindowRect(field, &r);
    ::MapWindowPoints(nullptr, hwnd, reinterpret_cast<POINT*>(&r), 2);
    EXPECT_TRUE(r.left == 10 && r.top == 20 && r.right == 90 && r.bottom == 40);
    DWORD from = 0;
    DWORD to = 0;
    ::SendMessageA(field, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    EXPECT_TRUE(from == 0 && to == 5) << from << " to " << to;
    EXPECT_TRUE(scene.log.empty());

    // The field lies over the scene.
    ::UpdateWindow(field);
    const std::vector<std::uint32_t> shown = capture(hwnd, 96, 64);
    EXPECT_EQ(shown[5 * 96 + 5], scene.expected_at(5, 5));
    EXPECT_NE(shown[30 * 96 + 80], scene.expected_at(80, 30));
}

TEST_F(TextLineEditorWin32Test, EnterOrAPressInTheWindowAcceptsAndEscapeCancels)
{
    const auto type_and_end = [&](const std::string& typed, auto end) {
        const HWND field = open_field("initial");
        ::SetWindowTextA(field, typed.c_str());
        end(field);
        EXPECT_FALSE(::IsWindow(field)) << typed;
    };
    type_and_end("typed", [](HWND field) { ::SendMessageA(field, WM_KEYDOWN, VK_RETURN, 0); });
    type_and_end("changed my mind", [](HWND field) { ::SendMessageA(field, WM_KEYDOWN, VK_ESCAPE, 0); });
    type_and_end("42", [&](HWND) { send(WM_LBUTTONDOWN, MK_LBUTTON, 5, 5); });
    EXPECT_EQ(scene.log, (Log{"a text typed accepted", "a text changed my mind cancelled", "a text 42 accepted"}));
}

TEST_F(TextLineEditorWin32Test, ASecondRequestEndsTheFirstFieldAndStopOrClosingCancels)
{
    const HWND first = open_field("one");
    const HWND second = open_field("two");
    EXPECT_FALSE(::IsWindow(first));
    EXPECT_EQ(text_of(second), "two");
    EXPECT_EQ(scene.a.handle_message(TextInputStop()), 0);
    EXPECT_FALSE(::IsWindow(second));
    EXPECT_EQ(scene.a.handle_message(TextInputStop()), -1);
    open_field("left open");
    window.close();
    EXPECT_EQ(scene.log, (Log{"a text one cancelled", "a text two cancelled", "a text left open cancelled"}));
}

// --- the window's life ---

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
        ::SendMessageA(window.use_handle(), WM_LBUTTONDOWN, MK_LBUTTON, at(15, 12));
        ::SendMessageA(window.use_handle(), WM_MOUSEMOVE, MK_LBUTTON, at(15, 16));
    }

    WindowScene scene;
    WindowWin32 window;
};

class WindowLifecycleWin32Test : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { parent = make_host_window(); }
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
        pump(0);
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
    EXPECT_FALSE(class_exists(WindowWin32::get_class_name()));
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
    EXPECT_TRUE(class_exists(WindowWin32::get_class_name()));
    second.press_a();
    EXPECT_EQ(second.scene.log.back(), "a move 15,16");
    second.window.close();
    // Closed but not yet gone: the class waits for the last window object.
    EXPECT_TRUE(class_exists(WindowWin32::get_class_name()));
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
        const HWND host = make_host_window();
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
    EXPECT_FALSE(class_exists(WindowWin32::get_class_name()));
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
    EXPECT_EQ(editor.scene.a.handle_message(Invalidate(Rect{0, 0, 5, 5})), -1);
}

TEST_F(WindowLifecycleWin32Test, AHostThatDestroysItsWindowFirstTakesOursAlong)
{
    Editor editor;
    const HWND doomed = make_host_window();
    ASSERT_EQ(editor.window.open(doomed), 0);
    editor.scene.a.capture_mode = capture_mode::hidden;
    editor.press_a();
    const int hidden = cursor_count();
    ::DestroyWindow(doomed);
    EXPECT_EQ(editor.window.use_handle(), nullptr);
    EXPECT_EQ(WindowWin32::get_open_count(), 0);
    EXPECT_EQ(editor.scene.log.back(), "a lost");
    EXPECT_EQ(cursor_count(), hidden + 1);
    // Its timer went with it; closing afterwards is harmless, opening again works.
    pump(20);
    editor.window.close();
    ASSERT_EQ(editor.window.open(parent), 0);
    editor.window.close();
}

}  // namespace
}  // namespace gadu
