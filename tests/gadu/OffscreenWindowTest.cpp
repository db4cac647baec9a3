#include "gadu/MessageHandlerInterface.h"
#include "gadu/OffscreenWindow.h"
#include "gadu/ShowObject.h"
#include "gadu/TimerManager.h"

#include "WindowScene.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

namespace gadu
{
namespace
{

using gadu_test::Log;
using gadu_test::ProbeControl;
using gadu_test::WindowScene;

// The small scene in a 64 x 48 window painted in tiles of 8 x 8: a at (4, 4)
// (10 x 10) and b at (30, 20) (16 x 16).
class OffscreenWindowTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_NE(scene.picture.pic, nullptr);
        window.set_tile_size(8, 8);
        scene.attach(window);
        open();
    }

    void open()
    {
        ASSERT_EQ(window.open(nullptr), 0);
        // As an editor shows its trees at every open.
        scene.background.handle_message(ShowObject(true));
        controls.handle_message(ShowObject(true));
        window.paint_all();
        log.clear();
    }

    std::uint32_t screen_at(int x, int y) const { return window.use_screen()->get_pixel(x, y) & 0xFFFFFFu; }
    std::pair<int, int> cursor() const { return {window.get_cursor().x, window.get_cursor().y}; }
    std::int32_t count_wrong() const
    {
        return scene.count_wrong([&](int x, int y) { return screen_at(x, y); }, window.use_zoom().get_factor());
    }

    WindowScene scene{WindowScene::kSmall};
    OffscreenWindow window{64, 48};
    Log& log = scene.log;
    CtrlGroupItem& controls = scene.controls;
    ProbeControl& a = scene.a;
    ProbeControl& b = scene.b;
};

// --- redraw ---

TEST_F(OffscreenWindowTest, EveryPaintShowsTheBackgroundWithTheControlsOverIt)
{
    EXPECT_EQ(count_wrong(), 0);
    // A margin around a, in tiles that cut through it: each tile gets the
    // background before a paints over it.
    a.handle_message(Invalidate(Rect{2, 2, 16, 16}));
    window.paint();
    EXPECT_EQ(count_wrong(), 0);
}

TEST_F(OffscreenWindowTest, InvalidateBecomesExactlyOneRedrawOfTheAreaInTilesColumnByColumn)
{
    EXPECT_EQ(a.request_redraw(), 0);
    EXPECT_EQ(window.get_dirty(), (Rect{4, 4, 14, 14}));
    EXPECT_EQ(window.paint(), (Rect{4, 4, 14, 14}));
    EXPECT_EQ(log, (Log{"a begin 4,4,14,14", "a redraw 4,4,12,12", "a redraw 4,12,12,14", "a redraw 12,4,14,12",
                        "a redraw 12,12,14,14", "a end 4,4,14,14"}));
    log.clear();
    EXPECT_TRUE(window.paint().is_empty());
    EXPECT_TRUE(log.empty());
}

TEST_F(OffscreenWindowTest, RequestsAreClippedToTheContentAndGatheredIntoOnePaint)
{
    b.handle_message(Invalidate(Rect{60, 40, 80, 60}));
    EXPECT_EQ(window.get_dirty(), (Rect{60, 40, 64, 48}));
    a.request_redraw();
    EXPECT_EQ(window.paint(), (Rect{4, 4, 64, 48}));
    EXPECT_EQ(std::count(log.begin(), log.end(), "a begin 4,4,64,48"), 1);
    EXPECT_EQ(std::count(log.begin(), log.end(), "b begin 4,4,64,48"), 1);
    log.clear();
    EXPECT_EQ(a.handle_message(Invalidate(Rect{70, 0, 90, 10})), 0);
    EXPECT_TRUE(window.paint().is_empty());
    EXPECT_TRUE(log.empty());
}

// --- capture ---

TEST_F(OffscreenWindowTest, ACapturingControlGetsEveryMouseMessageUntilItLetsGoOrLosesIt)
{
    a.capture_mode = capture_mode::plain;
    window.press(5, 5, mouse_button::left);
    EXPECT_EQ(a.capture_result, 0);
    EXPECT_EQ(window.use_capture_handler(), &a);
    window.move(35, 25);
    window.wheel(36, 26, 1.0f);
    window.release(35, 25, mouse_button::left);
    EXPECT_EQ(a.release_result, 0);
    EXPECT_FALSE(window.holds_capture());
    window.move(35, 25);
    EXPECT_EQ(log, (Log{"a highlight", "a click 5,5 b1 d0", "a move 35,25", "a wheel 1.000000",
                        "a click 35,25 b0 d0", "a lost", "b move 35,25"}));

    // A new capture tells the earlier holder, and only the holder may release.
    window.press(5, 5, mouse_button::left);
    EXPECT_EQ(b.handle_message(MouseRelease(&b)), -1);
    EXPECT_EQ(b.handle_message(MouseCapture(&b, capture_mode::hidden)), 0);
    EXPECT_EQ(window.use_capture_handler(), &b);
    EXPECT_FALSE(window.is_cursor_visible());
    EXPECT_EQ(log.back(), "a lost");
    EXPECT_EQ(a.handle_message(MouseRelease(&a)), -1);
    // The platform takes the mouse away: the holder hears of it, the cursor comes back.
    window.take_capture_away();
    EXPECT_EQ(log.back(), "b lost");
    EXPECT_EQ(window.use_capture_handler(), nullptr);
    EXPECT_TRUE(window.is_cursor_visible());
}

TEST_F(OffscreenWindowTest, EndlessDragDeliversMotionAndTakesTheCursorBackToTheOrigin)
{
    a.capture_mode = capture_mode::relative;
    window.set_time(10.0);
    window.press(5, 5, mouse_button::left);
    EXPECT_FALSE(window.is_cursor_visible());
    log.clear();
    window.move(5, 0);
    window.set_time(10.2);
    window.move(5, -3);
    // Not yet 250 ms: the cursor stays where the user left it.
    EXPECT_EQ(window.get_cursor().y, -3);
    window.set_time(10.3);
    window.move(5, -10);
    EXPECT_EQ(cursor(), (std::pair{5, 5}));
    // From the origin again; no second warp within 100 ms.
    window.move(5, 3);
    window.set_time(10.35);
    window.move(6, 1);
    EXPECT_EQ(window.get_cursor().y, 1);
    window.release(6, 1, mouse_button::left);
    EXPECT_EQ(log, (Log{"a move 0,-5", "a move 0,-3", "a move 0,-7", "a move 0,-2", "a move 1,-2",
                        "a click 0,0 b0 d0", "a lost"}));
    // Released after 250 ms without a position: back to where the drag began.
    EXPECT_EQ(cursor(), (std::pair{5, 5}));
    EXPECT_TRUE(window.is_cursor_visible());
}

TEST_F(OffscreenWindowTest, AShortEndlessDragNeverMovesTheCursorAndAReleaseMayNameWhereItEnds)
{
    a.capture_mode = capture_mode::relative;
    window.set_time(3.0);
    window.press(5, 5, mouse_button::left);
    window.set_time(3.2);
    window.release(7, 9, mouse_button::left);
    EXPECT_EQ(cursor(), (std::pair{7, 9}));
    EXPECT_TRUE(window.is_cursor_visible());

    ASSERT_EQ(a.handle_message(MouseCapture(&a, capture_mode::relative)), 0);
    window.set_time(4.0);
    EXPECT_EQ(a.handle_message(MouseRelease(&a, 40, 30)), 0);
    EXPECT_EQ(cursor(), (std::pair{40, 30}));
}

TEST_F(OffscreenWindowTest, ButtonMasksFollowTheButtonsAndADoubleClickIsMarked)
{
    window.press(5, 5, mouse_button::left);
    window.press(5, 5, mouse_button::right, modifier_key::shift);
    window.release(5, 5, mouse_button::left);
    window.release(5, 5, mouse_button::right);
    window.double_click(5, 5, mouse_button::left);
    // The ladder counts any click with a button still down as a press.
    EXPECT_EQ(log, (Log{"a highlight", "a click 5,5 b1 d0", "a highlight", "a click 5,5 b3 d0 m2", "a highlight",
                        "a click 5,5 b2 d0", "a click 5,5 b0 d0", "a highlight", "a click 5,5 b1 d1"}));
}

TEST_F(OffscreenWindowTest, DirectMoveSubscribersGetEveryMotionRelativeToThemselves)
{
    EXPECT_EQ(a.handle_message(MouseDirectCapture(&a)), 0);
    EXPECT_EQ(a.handle_message(MouseDirectCapture(&a)), 0);
    window.move(35, 25);
    EXPECT_EQ(a.handle_message(MouseDirectRelease(&a)), 0);
    window.move(36, 25);
    EXPECT_EQ(log, (Log{"a direct 31,21", "b move 35,25", "b move 36,25"}));
}

// --- timers ---

TEST_F(OffscreenWindowTest, TimersFireFromThePlatformTimerUntilClearedOrTheWindowCloses)
{
    window.set_time(1.0);
    std::uint32_t id = 0;
    EXPECT_EQ(a.handle_message(SetTimer(&a, 0.03f, id)), 0);
    window.run_timers(0.1);
    const std::string fired = "a notify " + std::to_string(id);
    EXPECT_EQ(std::count(log.begin(), log.end(), fired), 4);
    EXPECT_EQ(a.handle_message(ClearTimer(id)), 0);
    EXPECT_EQ(a.handle_message(ClearTimer(id)), -1);
    window.run_timers(0.1);
    EXPECT_EQ(std::count(log.begin(), log.end(), fired), 4);

    std::uint32_t second = 0;
    a.handle_message(SetTimer(&a, 0.03f, second));
    window.close();
    EXPECT_FALSE(window.use_timers().is_active(second));
}

// --- closing ---

TEST_F(OffscreenWindowTest, ClosingHidesTheTreeAndAClosedWindowRefusesEverything)
{
    window.disconnect_tree();
    EXPECT_EQ(log, (Log{"a hide", "b hide"}));
    EXPECT_FALSE(controls.is_visible());
    window.close();
    EXPECT_EQ(window.use_screen(), nullptr);
    EXPECT_EQ(a.handle_message(Invalidate(Rect{0, 0, 1, 1})), -1);
    std::uint32_t id = 0;
    EXPECT_EQ(a.handle_message(SetTimer(&a, 0.1f, id)), -1);
    log.clear();
    window.press(5, 5, mouse_button::left);
    EXPECT_TRUE(log.empty());
    // And it opens again.
    open();
    EXPECT_EQ(screen_at(5, 5), WindowScene::kColourA);
}

// --- zoom ---

// The same scene at zoom 2: the platform sees a window twice the size.
class ZoomedOffscreenWindowTest : public OffscreenWindowTest
{
protected:
    void SetUp() override
    {
        window.set_zoom(Zoom(2));
        OffscreenWindowTest::SetUp();
    }
};

TEST_F(ZoomedOffscreenWindowTest, PixelsAreBlocksPositionsAreDividedAndAnEndlessDragLosesNoHalfPixel)
{
    ASSERT_EQ(window.use_screen()->get_width(), 128);
    EXPECT_EQ(count_wrong(), 0);
    a.request_redraw();
    EXPECT_EQ(window.get_dirty(), (Rect{8, 8, 28, 28}));
    window.paint();
    EXPECT_EQ(log.front(), "a begin 4,4,14,14");

    log.clear();
    a.capture_mode = capture_mode::plain;
    window.press(9, 9, mouse_button::left);
    // Left of the window is the content pixel left of it, not pixel 0.
    window.move(-1, 95);
    EXPECT_EQ(log.at(1), "a click 4,4 b1 d0");
    EXPECT_EQ(log.back(), "a move -1,47");
    window.release(-1, 95, mouse_button::left);

    log.clear();
    a.capture_mode = capture_mode::relative;
    window.set_time(5.0);
    window.press(9, 9, mouse_button::left);
    // Three single platform pixels up are one and a half content pixels.
    window.move(9, 8);
    window.move(9, 7);
    window.move(9, 6);
    window.set_time(5.5);
    // The warp takes the cursor back to the origin's platform pixel.
    window.move(9, 5);
    EXPECT_EQ(window.get_cursor().y, 9);
    window.move(9, 8);
    EXPECT_EQ(log, (Log{"a highlight", "a click 4,4 b1 d0", "a move 0,-1", "a move 0,0", "a move 0,-1",
                        "a move 0,0", "a move 0,-1"}));
}

// A tree that outlives its window is let go of before the window goes, and
// then has nobody to send its up messages to.
TEST_F(OffscreenWindowTest, ATreeLetGoOfByItsWindowHasNoParent)
{
    CtrlGroupItem root;
    {
        OffscreenWindow short_lived(16, 16);
        short_lived.set_control_root(&root);
        EXPECT_EQ(root.use_parent(), &short_lived);
        short_lived.set_control_root(nullptr);
    }
    EXPECT_EQ(root.use_parent(), nullptr);
    EXPECT_EQ(root.handle_message(ClearTimer(1)), -1);
}

using Firings = std::vector<std::pair<std::uint32_t, double>>;

// Records every firing as (id, time) and runs an optional action inside it.
struct Receiver : MessageHandlerInterface
{
    std::int32_t handle_message(const MessageInterface& message) override
    {
        if (const auto* notify = dynamic_cast<const Notify*>(&message))
        {
            fired.emplace_back(notify->get_timer_id(), notify->get_time());
            if (action)
            {
                action(notify->get_timer_id());
            }
        }
        return 0;
    }

    Firings fired;
    std::function<void(std::uint32_t)> action;
};

class TimerManagerTest : public ::testing::Test
{
protected:
    std::uint32_t add(float period)
    {
        std::uint32_t id = 0;
        EXPECT_EQ(timers.add(SetTimer(&r, period, id)), 0);
        return id;
    }

    Receiver r;
    TimerManager timers;
};

TEST_F(TimerManagerTest, IdsAreFreshAndWrittenBackAndAnIdCannotBeAddedTwice)
{
    std::uint32_t a = 0;
    std::uint32_t b = 0;
    const SetTimer set_a(&r, 0.03f, a);
    const SetTimer set_b(&r, 0.03f, b);
    EXPECT_TRUE(a != 0 && b == a + 1);
    EXPECT_EQ(timers.add(set_a), 0);
    EXPECT_EQ(timers.add(set_a), -1);
    EXPECT_EQ(timers.remove(ClearTimer(b)), -1);
}

TEST_F(TimerManagerTest, FiresAtTheFirstRunAtLeastOnePeriodAfterItsLastFiring)
{
    const std::uint32_t id = add(0.03f);
    // Serviced every 2 ms of a millisecond clock, as the window's platform
    // timer does. Its last firing starts at 0, so the first run fires it.
    for (int ms = 1000; ms <= 1100; ms += 2)
    {
        timers.service(ms * 0.001);
    }
    EXPECT_EQ(r.fired, (Firings{{id, 1.0}, {id, 1.03}, {id, 1.06}, {id, 1.09}}));
    // Runs closer than 2 ms fire nothing, even at no period.
    const std::uint32_t eager = add(0.0f);
    timers.service(5.0);
    timers.service(5.0015);
    timers.service(5.002);
    EXPECT_EQ(Firings(r.fired.end() - 3, r.fired.end()), (Firings{{id, 5.0}, {eager, 5.0}, {eager, 5.002}}));
}

TEST_F(TimerManagerTest, AClearedTimerStopsAtOnceWhileTheOthersOfTheRunStillFire)
{
    const std::uint32_t first = add(0.01f);
    const std::uint32_t second = add(0.01f);
    // The first timer's handler clears both: the second must not fire in
    // this run, and the first never again.
    r.action = [&](std::uint32_t fired_id) {
        timers.remove(ClearTimer(first));
        timers.remove(ClearTimer(second));
        EXPECT_EQ(fired_id, first);
    };
    timers.service(1.0);
    timers.service(2.0);
    EXPECT_EQ(r.fired, (Firings{{first, 1.0}}));
    EXPECT_FALSE(timers.is_active(first));
    EXPECT_FALSE(timers.is_active(second));
}

TEST_F(TimerManagerTest, ClearInsideARunStopsEverythingButATimerSetAfterwards)
{
    const std::uint32_t a = add(0.01f);
    add(0.01f);
    std::uint32_t later = 0;
    r.action = [&](std::uint32_t) {
        if (later == 0)
        {
            timers.clear();
            later = add(0.5f);
        }
    };
    timers.service(1.0);
    // The second is gone before its turn; the new timer, later in id order and
    // never fired, comes up in the same run, then keeps its own period.
    timers.service(1.4);
    timers.service(1.6);
    EXPECT_EQ(r.fired, (Firings{{a, 1.0}, {later, 1.0}, {later, 1.6}}));
}

}  // namespace
}  // namespace gadu
