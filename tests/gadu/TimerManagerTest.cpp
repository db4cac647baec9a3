#include "gadu/MessageHandlerInterface.h"
#include "gadu/TimerManager.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace gadu
{
namespace
{

// Records every firing as (id, time) and runs an optional action inside it.
struct Receiver : MessageHandlerInterface
{
    std::int32_t handle_message(const MessageInterface& message) override
    {
        const auto* notify = dynamic_cast<const Notify*>(&message);
        if (notify != nullptr)
        {
            fired.emplace_back(notify->get_timer_id(), notify->get_time());
            if (action)
            {
                action(notify->get_timer_id());
            }
        }
        return 0;
    }

    std::vector<std::pair<std::uint32_t, double>> fired;
    std::function<void(std::uint32_t)> action;
};

TEST(TimerManagerTest, IdsAreFreshAndWrittenBackAndAnIdCannotBeAddedTwice)
{
    Receiver r;
    TimerManager timers;
    std::uint32_t a = 0;
    std::uint32_t b = 0;
    const SetTimer set_a(&r, 0.03f, a);
    const SetTimer set_b(&r, 0.03f, b);
    EXPECT_NE(a, 0u);
    EXPECT_EQ(b, a + 1);
    EXPECT_EQ(set_a.get_timer_id(), a);
    EXPECT_EQ(timers.add(set_a), 0);
    EXPECT_EQ(timers.add(set_a), -1);
    EXPECT_EQ(timers.remove(ClearTimer(b)), -1);
    EXPECT_EQ(timers.remove(ClearTimer(a)), 0);
    EXPECT_FALSE(timers.is_active(a));
    EXPECT_EQ(timers.remove(ClearTimer(a)), -1);
}

TEST(TimerManagerTest, FiresAtTheFirstRunAtLeastOnePeriodAfterItsLastFiring)
{
    Receiver r;
    TimerManager timers;
    std::uint32_t id = 0;
    timers.add(SetTimer(&r, 0.03f, id));
    // Serviced every 2 ms of a millisecond clock, as the window's platform timer does.
    for (int ms = 1000; ms <= 1100; ms += 2)
    {
        timers.service(ms * 0.001);
    }
    ASSERT_EQ(r.fired.size(), 4u);
    // Its last firing starts at 0, so the first run fires it.
    EXPECT_DOUBLE_EQ(r.fired[0].second, 1.0);
    EXPECT_DOUBLE_EQ(r.fired[1].second, 1.03);
    EXPECT_DOUBLE_EQ(r.fired[2].second, 1.06);
    EXPECT_DOUBLE_EQ(r.fired[3].second, 1.09);
}

TEST(TimerManagerTest, RunsCloserThanTwoMillisecondsFireNothing)
{
    Receiver r;
    TimerManager timers;
    std::uint32_t id = 0;
    timers.add(SetTimer(&r, 0.0f, id));
    timers.service(5.0);
    timers.service(5.0015);
    timers.service(5.002);
    EXPECT_EQ(r.fired.size(), 2u);
}

TEST(TimerManagerTest, AClearedTimerStopsAtOnceWhileTheOthersOfTheRunStillFire)
{
    Receiver r;
    TimerManager timers;
    std::uint32_t first = 0;
    std::uint32_t second = 0;
    timers.add(SetTimer(&r, 0.01f, first));
    timers.add(SetTimer(&r, 0.01f, second));
    // The first timer's handler clears both: the second must not fire in
    // this run, and the first never again.
    r.action = [&](std::uint32_t fired_id) {
        if (fired_id == first)
        {
            timers.remove(ClearTimer(first));
            timers.remove(ClearTimer(second));
        }
    };
    timers.service(1.0);
    r.action = nullptr;
    timers.service(2.0);
    ASSERT_EQ(r.fired.size(), 1u);
    EXPECT_EQ(r.fired[0].first, first);
    EXPECT_FALSE(timers.is_active(first));
    EXPECT_FALSE(timers.is_active(second));
}

TEST(TimerManagerTest, ClearInsideARunStopsEverythingButATimerSetAfterwards)
{
    Receiver r;
    TimerManager timers;
    std::uint32_t a = 0;
    std::uint32_t b = 0;
    std::uint32_t later = 0;
    timers.add(SetTimer(&r, 0.01f, a));
    timers.add(SetTimer(&r, 0.01f, b));
    bool cleared = false;
    r.action = [&](std::uint32_t) {
        if (cleared)
        {
            return;
        }
        cleared = true;
        timers.clear();
        timers.add(SetTimer(&r, 0.5f, later));
    };
    timers.service(1.0);
    // b is gone before its turn; the new timer, later in id order and never
    // fired, comes up in the same run, then keeps its own period.
    timers.service(1.4);
    timers.service(1.6);
    EXPECT_EQ(r.fired, (std::vector<std::pair<std::uint32_t, double>>{{a, 1.0}, {later, 1.0}, {later, 1.6}}));
}

}  // namespace
}  // namespace gadu
