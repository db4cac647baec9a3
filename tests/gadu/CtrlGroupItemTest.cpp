#include "gadu/CtrlGroupItem.h"
#include "gadu/DefaultEventListener.h"
#include "gadu/GraphicMessage.h"
#include "gadu/MemoryRenderingBuffer.h"
#include "gadu/ShowObject.h"

#include "WindowScene.h"

#include <gtest/gtest.h>

namespace gadu
{
namespace
{

using gadu_test::Log;
using gadu_test::ProbeControl;

// The end of the up path: records what arrives and accepts it.
class FakeWindow : public MessageHandlerInterface
{
public:
    std::int32_t handle_message(const MessageInterface& message) override
    {
        if (const auto* inv = dynamic_cast<const Invalidate*>(&message))
        {
            invalidated.push_back(inv->get_region());
        }
        ++up_count;
        return answer;
    }

    std::vector<Rect> invalidated;
    int up_count = 0;
    std::int32_t answer = 0;
};

class CtrlGroupItemTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        root.set_parent(&window);
        root.handle_message(ShowObject(true));
        root.set_position(0, 0);
        lower.set_position(10, 10);
        upper.set_position(20, 20);
        root.add_control(lower);
        root.add_control(upper);
        log.clear();
    }

    Log log;
    FakeWindow window;
    CtrlGroupItem root;
    // Two 20 x 20 controls overlapping on (20..30, 20..30).
    ProbeControl lower{"lower", log, Rect{0, 0, 20, 20}};
    ProbeControl upper{"upper", log, Rect{0, 0, 20, 20}};
};

TEST_F(CtrlGroupItemTest, ClickOnOverlapGoesToLastAddedDrawingReachesBothFirstAddedFirst)
{
    EXPECT_EQ(root.handle_message(MouseClick(25, 25, 1, 0, 0)), 1);
    MemoryRenderingBuffer buffer(64, 64);
    EXPECT_EQ(root.handle_message(Redraw(Rect{0, 0, 64, 64}, buffer)), 0);
    // A tile that touches lower's right edge (x 30) does not overlap it.
    root.handle_message(Redraw(Rect{30, 0, 35, 25}, buffer));
    EXPECT_EQ(log, (Log{"upper highlight", "upper click 25,25 b1 d0", "lower redraw 0,0,64,64",
                        "upper redraw 0,0,64,64", "upper redraw 30,0,35,25"}));
}

TEST_F(CtrlGroupItemTest, ClickGoesOnDownwardsUntilAControlTakesItAndMissesReachNobody)
{
    upper.click_answer = 0;
    EXPECT_EQ(root.handle_message(MouseClick(25, 25, 0, 0, 0)), 1);
    EXPECT_EQ(log, (Log{"upper click 25,25 b0 d0", "lower click 25,25 b0 d0"}));
    log.clear();
    EXPECT_EQ(root.handle_message(MouseClick(5, 5, 1, 0, 0)), 0);
    // Half-open edges: x2 and y2 lie outside.
    EXPECT_EQ(root.handle_message(MouseMove(40, 25)), 0);
    EXPECT_EQ(root.handle_message(MouseMove(39, 39)), 1);
    EXPECT_EQ(log, (Log{"upper move 39,39"}));
}

TEST_F(CtrlGroupItemTest, ListenersSeeEveryMessageAndOnlyAnEnabledControlsPress)
{
    struct Counting : DefaultEventListener
    {
        void before_message(const MessageInterface&) override { ++before; }
        void after_message(const MessageInterface&) override { ++after; }
        void on_press() override { ++presses; }
        int before = 0;
        int after = 0;
        int presses = 0;
    } listener;
    upper.set_listener(&listener);
    // A release, and a press while disabled, are no presses.
    root.handle_message(MouseClick(25, 25, 0, 0, 0));
    upper.set_enabled(false);
    root.handle_message(MouseClick(25, 25, 1, 0, 0));
    EXPECT_EQ(listener.presses, 0);
    EXPECT_FALSE(upper.is_pressed());
    upper.set_enabled(true);
    root.handle_message(MouseClick(25, 25, 2, 0, 0));
    EXPECT_EQ(listener.presses, 1);
    EXPECT_TRUE(upper.is_pressed());
    EXPECT_TRUE(listener.before == 3 && listener.after == 3);
    EXPECT_EQ(log, (Log{"upper click 25,25 b0 d0", "upper click 25,25 b1 d0", "upper highlight",
                        "upper click 25,25 b2 d0"}));
}

TEST_F(CtrlGroupItemTest, HiddenControlDrawsNothingButStillTakesTheMouse)
{
    upper.handle_message(ShowObject(false));
    EXPECT_EQ(log, (Log{"upper hide"}));
    log.clear();
    MemoryRenderingBuffer buffer(64, 64);
    EXPECT_EQ(upper.handle_message(RedrawBegin(Rect{0, 0, 64, 64})), 0);
    root.handle_message(Redraw(Rect{0, 0, 64, 64}, buffer));
    EXPECT_EQ(upper.handle_message(RedrawEnd(Rect{0, 0, 64, 64})), 0);
    EXPECT_EQ(root.handle_message(MouseMove(25, 25)), 1);
    EXPECT_EQ(log, (Log{"lower redraw 0,0,64,64", "upper move 25,25"}));
    // Nor does it ask to be drawn.
    EXPECT_EQ(upper.request_redraw(), 0);
    EXPECT_TRUE(window.invalidated.empty());
}

TEST_F(CtrlGroupItemTest, ControlsAddedToAHiddenGroupStayHiddenUntilTheGroupIsShown)
{
    CtrlGroupItem hidden_group;
    hidden_group.set_position(0, 0);
    ProbeControl control{"c", log, Rect{0, 0, 5, 5}};
    hidden_group.add_control(control);
    EXPECT_FALSE(control.is_visible());
    EXPECT_EQ(log, (Log{"c hide"}));
    hidden_group.handle_message(ShowObject(true));
    EXPECT_TRUE(control.is_visible());
    EXPECT_TRUE(lower.is_visible());
}

TEST_F(CtrlGroupItemTest, AControlThatLeavesTheGroupDuringAClickEndsTheWalk)
{
    struct Leaver : DefaultEventListener
    {
        explicit Leaver(CtrlGroupItem& g) : group(g) {}
        void after_message(const MessageInterface&) override { group.remove_control(*use_control()); }
        CtrlGroupItem& group;
    } leaver(root);
    upper.click_answer = 0;
    upper.set_listener(&leaver);
    // Without the stop flag the walk would go on at an index that now names
    // another control, or past the end of the list.
    EXPECT_EQ(root.handle_message(MouseClick(25, 25, 0, 0, 0)), 0);
    EXPECT_EQ(log, (Log{"upper click 25,25 b0 d0"}));
    EXPECT_EQ(root.get_control_count(), 1);
    EXPECT_FALSE(upper.is_placed());
    EXPECT_EQ(upper.handle_message(ClearTimer(1)), -1);
    EXPECT_FALSE(root.remove_control(upper));
}

TEST_F(CtrlGroupItemTest, MouseGoesToControlsBeforeChildGroupsDrawingToChildGroupsFirst)
{
    CtrlGroupItem child;
    ProbeControl inner{"inner", log, Rect{0, 0, 100, 100}};
    child.add_control(inner);
    root.add_group(child);
    root.set_position(0, 0);
    child.handle_message(ShowObject(true));
    log.clear();
    upper.click_answer = 0;
    lower.click_answer = 0;
    root.handle_message(MouseClick(25, 25, 0, 0, 0));
    MemoryRenderingBuffer buffer(64, 64);
    root.handle_message(Redraw(Rect{0, 0, 64, 64}, buffer));
    EXPECT_EQ(log, (Log{"upper click 25,25 b0 d0", "lower click 25,25 b0 d0", "inner click 25,25 b0 d0",
                        "inner redraw 0,0,64,64", "lower redraw 0,0,64,64", "upper redraw 0,0,64,64"}));
}

TEST_F(CtrlGroupItemTest, MovingTheGroupOrTheControlMovesWhereItIsHitAndDrawn)
{
    root.set_position(100, 0);
    EXPECT_EQ(upper.get_x(), 120);
    EXPECT_EQ(root.handle_message(MouseMove(25, 25)), 0);
    EXPECT_EQ(root.handle_message(MouseMove(125, 25)), 1);
    upper.set_position(0, 0);
    EXPECT_EQ(upper.get_x(), 100);
    EXPECT_EQ(upper.get_rel_x(), 0);
    upper.request_redraw();
    EXPECT_EQ(window.invalidated, (std::vector<Rect>{Rect{100, 0, 120, 20}}));
}

TEST_F(CtrlGroupItemTest, UnplacedGroupsAndControlsWithoutHitRectangleAreReachedByNothing)
{
    CtrlGroupItem unplaced;
    ProbeControl control{"c", log, Rect{0, 0, 5, 5}};
    unplaced.add_control(control);
    EXPECT_EQ(unplaced.handle_message(MouseMove(0, 0)), 0);
    EXPECT_EQ(unplaced.handle_message(MouseMove(-1, -1)), 0);

    ProbeControl unset{"unset", log, BoundingBoxDefaultChecker().get_hit_rect()};
    root.add_control(unset);
    log.clear();
    root.handle_message(RedrawBegin(WHOLE_AREA));
    root.handle_message(MouseMove(SPTreeNodeInterface::kUnplaced, SPTreeNodeInterface::kUnplaced));
    EXPECT_EQ(log, (Log{"lower begin -32000,-32000,32000,32000", "upper begin -32000,-32000,32000,32000"}));
}

TEST_F(CtrlGroupItemTest, UpMessagesEndAtTheWindowOrAreRefusedWithoutOne)
{
    EXPECT_EQ(upper.handle_message(ClearTimer(7)), 0);
    EXPECT_EQ(window.up_count, 1);
    window.answer = 5;
    EXPECT_EQ(root.handle_message(ClearTimer(7)), 5);
    ProbeControl orphan{"o", log, Rect{0, 0, 1, 1}};
    EXPECT_EQ(orphan.handle_message(ClearTimer(7)), -1);
    EXPECT_EQ(orphan.handle_message(MouseCapture(&orphan, 0)), -1);
    CtrlGroupItem lonely;
    EXPECT_EQ(lonely.handle_message(ClearTimer(7)), -1);
}

}  // namespace
}  // namespace gadu
