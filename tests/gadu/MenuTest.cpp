#include "gadu/KeyboardMessage.h"
#include "gadu/Menu.h"
#include "gadu/MenuDelimiter.h"
#include "gadu/MenuItem.h"
#include "gadu/TextInputRequest.h"
#include "gadu/TextLineEditorInterface.h"

#include "ProbeControl.h"

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
    EXPECT_NE(top.get_id(), 0u);
    EXPECT_GT(silent.get_id(), deep.get_id());

    EXPECT_EQ(menu.use_root().find_item(top.get_id()), &top);
    EXPECT_EQ(menu.use_root().find_item(deep.get_id()), &deep);
    EXPECT_EQ(menu.use_root().find_item(silent.get_id()), &silent);
    // 0 is the platform's "nothing chosen"; an id of another menu is unknown here.
    EXPECT_EQ(menu.use_root().find_item(0), nullptr);
    MenuItem stranger("stranger");
    EXPECT_EQ(menu.use_root().find_item(stranger.get_id()), nullptr);

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
    EXPECT_EQ(editor.get_initial_text(), "initial");
    EXPECT_EQ(editor.get_rect(), (Rect{1, 2, 3, 4}));

    editor.close(std::string(1500, 'x'), true);
    editor.close("again", false);
    ASSERT_EQ(log.size(), 1u);
    EXPECT_EQ(log[0], "r text " + std::string(TextLineEditorInterface::kMaxTextLength, 'x') + " accepted");
    EXPECT_FALSE(editor.is_active());
    EXPECT_EQ(editor.stop(), -1);
}

}  // namespace
}  // namespace gadu
