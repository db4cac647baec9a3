#include "gadu/CtrlGroupItem.h"
#include "gadu/ShowObject.h"
#include "gadu/TextInputRequest.h"
#include "gadu/win32/WindowWin32.h"

#include "tests/gadu/ProbeControl.h"
#include "tests/gadu/win32/HostWindowWin32.h"
#include "tests/gadu/win32/WindowCaptureWin32.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <string>

namespace gadu
{
namespace
{

using gadu_test::Log;

constexpr std::uint32_t kProbeColour = 0x806040u;

class TextLineEditorWin32Test : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { parent = gadu_test::make_host_window(); }
    static void TearDownTestSuite() { ::DestroyWindow(parent); }

    void SetUp() override
    {
        gadu_test::set_up_tree(window, controls, control, 120, 60);
        ASSERT_EQ(window.open(parent), 0) << window.get_error_text();
        hwnd = window.use_handle();
        ::UpdateWindow(hwnd);
        log.clear();
    }

    void TearDown() override { window.close(); }

    HWND open_field(const std::string& text)
    {
        EXPECT_EQ(control.handle_message(TextInputRequest(&control, Rect{10, 20, 110, 40}, text)), 0);
        return ::FindWindowExA(hwnd, nullptr, "EDIT", nullptr);
    }

    static std::string text_of(HWND field)
    {
        char text[64] = {};
        ::GetWindowTextA(field, text, sizeof(text));
        return text;
    }

    static inline HWND parent = nullptr;
    Log log;
    CtrlGroupItem controls;
    gadu_test::ProbeControl control{"c", log, Rect{0, 0, 120, 60}, kProbeColour};
    WindowWin32 window;
    HWND hwnd = nullptr;
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
    EXPECT_EQ(r.left, 10);
    EXPECT_EQ(r.top, 20);
    EXPECT_EQ(r.right, 110);
    EXPECT_EQ(r.bottom, 40);
    DWORD from = 0;
    DWORD to = 0;
    ::SendMessageA(field, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    EXPECT_EQ(from, 0u);
    EXPECT_EQ(to, 5u);
    EXPECT_TRUE(log.empty());

    // The field lies over the content, which the probe paints in one colour.
    ::UpdateWindow(field);
    const std::vector<std::uint32_t> shown = gadu_test::capture(hwnd, 120, 60);
    EXPECT_EQ(shown[5 * 120 + 5], kProbeColour);
    EXPECT_NE(shown[30 * 120 + 15], kProbeColour);
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
    type_and_end("42", [&](HWND) { ::SendMessageA(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, gadu_test::at(5, 5)); });
    EXPECT_EQ(log, (Log{"c text typed accepted", "c text changed my mind cancelled", "c text 42 accepted",
                        "c highlight", "c click 5,5 b1 d0"}));
}

TEST_F(TextLineEditorWin32Test, ASecondRequestEndsTheFirstFieldAndStopOrClosingCancels)
{
    const HWND first = open_field("one");
    const HWND second = open_field("two");
    EXPECT_FALSE(::IsWindow(first));
    EXPECT_EQ(text_of(second), "two");
    EXPECT_EQ(control.handle_message(TextInputStop()), 0);
    EXPECT_FALSE(::IsWindow(second));
    EXPECT_EQ(control.handle_message(TextInputStop()), -1);
    open_field("left open");
    window.close();
    EXPECT_EQ(log, (Log{"c text one cancelled", "c text two cancelled", "c text left open cancelled"}));
}

}  // namespace
}  // namespace gadu
