#include "gadu/TextInputRequest.h"

#include "tests/gadu/win32/HostWindowWin32.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <string>

namespace gadu
{
namespace
{

using gadu_test::Log;

// A text field that a asks for over the scene.
class TextLineEditorWin32Test : public gadu_test::SceneWindowWin32Test
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
    EXPECT_EQ(r.left, 10);
    EXPECT_EQ(r.top, 20);
    EXPECT_EQ(r.right, 90);
    EXPECT_EQ(r.bottom, 40);
    DWORD from = 0;
    DWORD to = 0;
    ::SendMessageA(field, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    EXPECT_EQ(from, 0u);
    EXPECT_EQ(to, 5u);
    EXPECT_TRUE(scene.log.empty());

    // The field lies over the scene.
    ::UpdateWindow(field);
    const std::vector<std::uint32_t> shown = gadu_test::capture(hwnd, 96, 64);
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

}  // namespace
}  // namespace gadu
