#include "tools/vsthost/EditorParent.h"
#include "tools/vsthost/MousePlayer.h"
#include "tools/vsthost/MouseScript.h"
#include "tools/vsthost/WindowProbe.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

// The host's windows and the mouse messages it plays, against a child window
// that records what it gets. Needs a display; skipped without one.
namespace
{

using vsthost::EditorParent;
using vsthost::MousePlayer;
using vsthost::MouseScript;
using vsthost::WindowProbe;

struct Received
{
    UINT message;
    WPARAM state;
    int x;
    int y;
};

std::vector<Received> g_received;

// Moving the cursor to each point makes the system send moves of its own, with
// the real buttons' state (none), at times of its choosing. Only the player's
// posted messages are under test: the system names no origin for those. The
// query is newer than the Windows version the build targets, so it is looked
// up, with its record laid out as the system's.
bool is_posted()
{
    struct InputMessageSource
    {
        int device_type;
        int origin;
    };
    using Query = BOOL(WINAPI*)(InputMessageSource*);
    static const auto query = reinterpret_cast<Query>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("user32.dll"), "GetCurrentInputMessageSource")));
    InputMessageSource source{0, 0};
    return query == nullptr || !query(&source) || source.origin == 0;
}

LRESULT CALLBACK recording_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam)
{
    switch (message)
    {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_MOUSEMOVE:
        if (!is_posted())
        {
            return 0;
        }
        g_received.push_back({message, wparam, static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))});
        if (message == WM_LBUTTONDOWN)
        {
            SetCapture(window);
        }
        if (message == WM_LBUTTONUP)
        {
            ReleaseCapture();
        }
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_PAINT: {
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(window, &ps);
        HBRUSH brush = CreateSolidBrush(RGB(10, 200, 30));
        RECT all;
        GetClientRect(window, &all);
        FillRect(dc, &all, brush);
        DeleteObject(brush);
        EndPaint(window, &ps);
        return 0;
    }
    default:
        return DefWindowProcA(window, message, wparam, lparam);
    }
}

// A child at (20, 10), 100 x 50, in a 200 x 100 parent.
class EditorWindows : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (!_parent.is_open())
        {
            GTEST_SKIP() << "no display";
        }
        static bool registered = false;
        if (!registered)
        {
            WNDCLASSA wc{};
            wc.style = CS_DBLCLKS;
            wc.lpfnWndProc = &recording_proc;
            wc.hInstance = GetModuleHandleA(nullptr);
            wc.lpszClassName = "VsthostRecordingChild";
            registered = RegisterClassA(&wc) != 0;
        }
        _parent.set_size(200, 100);
        _child = CreateWindowExA(0, "VsthostRecordingChild", "", WS_CHILD | WS_VISIBLE, 20, 10, 100, 50,
                                 static_cast<HWND>(_parent.use_handle()), nullptr, GetModuleHandleA(nullptr), nullptr);
        ASSERT_NE(_child, nullptr);
        _parent.pump();
        g_received.clear();
    }

    void play(const std::string& script)
    {
        MousePlayer player(_parent.use_handle());
        for (const auto& step : MouseScript::parse(script))
        {
            player.play(step);
            _parent.pump();
        }
    }

    EditorParent _parent;
    HWND _child = nullptr;
};

TEST_F(EditorWindows, ButtonsAndMovesReachTheChildInItsCoordinatesWithTheButtonState)
{
    play("down 30 20; move 30 -40 2; up 30 -40; rdown 25 15");
    ASSERT_EQ(g_received.size(), 5u);
    EXPECT_EQ(g_received[0].message, static_cast<UINT>(WM_LBUTTONDOWN));
    EXPECT_EQ(g_received[0].x, 10);
    EXPECT_EQ(g_received[0].y, 10);
    EXPECT_EQ(g_received[0].state, static_cast<WPARAM>(MK_LBUTTON));
    // Outside the child, the capture still brings the moves there.
    EXPECT_EQ(g_received[1].message, static_cast<UINT>(WM_MOUSEMOVE));
    EXPECT_EQ(g_received[1].y, -20);
    EXPECT_EQ(g_received[2].y, -50);
    EXPECT_EQ(g_received[2].state, static_cast<WPARAM>(MK_LBUTTON));
    EXPECT_EQ(g_received[3].message, static_cast<UINT>(WM_LBUTTONUP));
    EXPECT_EQ(g_received[3].state, 0u);
    EXPECT_EQ(g_received[4].message, static_cast<UINT>(WM_RBUTTONDOWN));
    EXPECT_EQ(g_received[4].state, static_cast<WPARAM>(MK_RBUTTON));
}

TEST_F(EditorWindows, ADoubleClickIsTheSystemsSequenceAndMissesWindowsOutsideThePoint)
{
    play("dblclick 40 30; click 150 80");
    ASSERT_EQ(g_received.size(), 4u);
    EXPECT_EQ(g_received[2].message, static_cast<UINT>(WM_LBUTTONDBLCLK));
    EXPECT_EQ(g_received[3].message, static_cast<UINT>(WM_LBUTTONUP));
}

TEST_F(EditorWindows, ACaptureShowsTheChildsPixelsAndCloseOnlyAsks)
{
    const auto image = WindowProbe::capture(_parent.use_handle());
    ASSERT_EQ(image.width, 200);
    ASSERT_EQ(image.height, 100);
    EXPECT_EQ(image.use_pixel(60, 30)[1], 200);  // inside the green child
    EXPECT_NE(image.use_pixel(5, 5)[1], 200);
    EXPECT_EQ(WindowProbe::get_child_class(_parent.use_handle()).name, "VsthostRecordingChild");
    SendMessageA(static_cast<HWND>(_parent.use_handle()), WM_CLOSE, 0, 0);
    EXPECT_TRUE(_parent.is_close_requested());
    EXPECT_TRUE(IsWindow(_child));
}

}  // namespace
