#include "gadu/Menu.h"
#include "gadu/MenuDelimiter.h"
#include "gadu/MenuItem.h"
#include "gadu/MenuList.h"
#include "gadu/PopupMenuLayout.h"
#include "gadu/TextInputRequest.h"
#include "gadu/TextLineEditorInterface.h"

#include "WindowScene.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace gadu
{
namespace
{

using gadu_test::Log;
using gadu_test::ProbeControl;

TEST(MenuTest, FindsItemsInSubmenusAndRunsTheirActions)
{
    Log log;
    gadu_test::RecordingAction action{log};
    Menu menu;
    MenuItem& top = menu.use_root().add(std::make_unique<MenuItem>("top", &action));
    menu.use_root().add(std::make_unique<MenuDelimiter>("group"));
    MenuList& sub = menu.use_root().add(std::make_unique<MenuList>("more"));
    MenuList& deeper = sub.add(std::make_unique<MenuList>("deeper"));
    MenuItem& deep = deeper.add(std::make_unique<MenuItem>("deep", &action));
    MenuItem& silent = sub.add(std::make_unique<MenuItem>("silent"));
    EXPECT_EQ(menu.use_root().find_item(deep.get_id()), &deep);
    EXPECT_EQ(menu.use_root().find_item(silent.get_id()), &silent);
    // 0 is the platform's "nothing chosen".
    EXPECT_EQ(menu.use_root().find_item(0), nullptr);

    deep.choose();
    silent.choose();
    top.choose();
    EXPECT_EQ(log, (Log{"chose deep", "chose top"}));
    // A menu that is only a model has nothing shown to stop.
    EXPECT_EQ(menu.stop(), -1);
}

// The platform's part reduced to what a test can drive: the user's final text
// arrives through close().
class FakeLineEditor : public TextLineEditorInterface
{
public:
    std::int32_t start(const TextInputRequest& request) override
    {
        begin(request);
        return 0;
    }
    std::int32_t stop() override
    {
        if (!is_active())
        {
            return -1;
        }
        close("", false);
        return 0;
    }
    void close(const std::string& text, bool accepted)
    {
        set_accepted(accepted);
        finish(text);
    }
};

TEST(TextLineEditorTest, AnswersTheRequesterOnceWithTheTextCutToItsLimit)
{
    Log log;
    ProbeControl requester("r", log, Rect{0, 0, 1, 1});
    FakeLineEditor editor;
    ASSERT_EQ(editor.start(TextInputRequest(&requester, Rect{1, 2, 3, 4}, "initial")), 0);
    EXPECT_TRUE(editor.is_active());

    editor.close(std::string(1500, 'x'), true);
    editor.close("again", false);
    ASSERT_EQ(log.size(), 1u);
    EXPECT_EQ(log[0], "r text " + std::string(TextLineEditorInterface::kMaxTextLength, 'x') + " accepted");
    EXPECT_FALSE(editor.is_active());
    EXPECT_EQ(editor.stop(), -1);
}

using Kind = PopupMenuLayout::Kind;

// Ten pixels a letter, lines of 12.
class PopupMenuLayoutTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        list.add(std::make_unique<MenuItem>("Learn")).set_checked(true);
        list.add(std::make_unique<MenuItem>("Hidden")).set_visible(false);
        list.add(std::make_unique<MenuDelimiter>());
        list.add(std::make_unique<MenuItem>("CC 74")).set_disabled(true);
        list.add(std::make_unique<MenuDelimiter>("more"));
        list.add(std::make_unique<MenuList>("Sub"));
        list.add(std::make_unique<MenuItem>(std::string(200, 'L')));
        layout.build(list, 12, [](const std::string& text) { return static_cast<std::int32_t>(10 * text.size()); });
    }

    MenuList list;
    PopupMenuLayout layout;
};

TEST_F(PopupMenuLayoutTest, VisibleNodesBecomeRowsOfTheirKindOneBelowTheOther)
{
    const auto& rows = layout.use_rows();
    ASSERT_EQ(rows.size(), 6u);
    EXPECT_EQ(rows[0].text, "Learn");
    EXPECT_TRUE(rows[0].checked);
    EXPECT_EQ(rows[1].kind, Kind::separator);
    EXPECT_FALSE(rows[2].enabled);
    EXPECT_EQ(rows[3].kind, Kind::title);
    EXPECT_EQ(rows[3].text, "---- more ----");
    EXPECT_EQ(rows[4].kind, Kind::submenu);
    EXPECT_EQ(rows[5].text.size(), PopupMenuLayout::kMaxLabel);
    // 3 padding, then rows of 12 + 6 and a separator of 7.
    EXPECT_EQ(rows[0].y1, 3);
    EXPECT_EQ(rows[1].y1, 21);
    EXPECT_EQ(rows[2].y1, 28);
    EXPECT_EQ(layout.get_height(), 3 + 5 * 18 + 7 + 3);
    EXPECT_EQ(layout.get_width(), 1270 + 40);
    EXPECT_EQ(layout.row_at(5, 27), 1);
    EXPECT_EQ(layout.row_at(5, 28), 2);
    EXPECT_EQ(layout.row_at(-1, 28), -1);
    EXPECT_EQ(layout.row_at(layout.get_width(), 28), -1);
    EXPECT_EQ(layout.row_at(5, 2), -1);
}

TEST_F(PopupMenuLayoutTest, TheArrowsSkipWhatCannotBeChosenAndGoRoundTheEnds)
{
    EXPECT_EQ(layout.next(-1, 1), 0);
    EXPECT_EQ(layout.next(-1, -1), 5);
    EXPECT_EQ(layout.next(0, 1), 4);
    EXPECT_EQ(layout.next(4, -1), 0);
    EXPECT_EQ(layout.next(5, 1), 0);
    EXPECT_FALSE(layout.is_choosable(2));
    EXPECT_FALSE(layout.is_choosable(6));
    MenuList lines;
    lines.add(std::make_unique<MenuDelimiter>());
    layout.build(lines, 12, [](const std::string&) { return 0; });
    EXPECT_EQ(layout.next(-1, 1), -1);
    MenuList one;
    one.add(std::make_unique<MenuItem>("One"));
    layout.build(one, 12, [](const std::string&) { return 0; });
    EXPECT_EQ(layout.next(0, 1), 0);
    layout.build(MenuList(), 12, [](const std::string&) { return 0; });
    EXPECT_EQ(layout.next(-1, -1), -1);
}

}  // namespace
}  // namespace gadu
