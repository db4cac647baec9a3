#include "gadu/MessageHandlerInterface.h"
#include "gadu/TimerManager.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace gadu
{
namespace
{

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
