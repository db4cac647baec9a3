#include "gadu/Knob.h"

#include "ControlHarness.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace gadu
{
namespace
{

// A listener that halves what reaches its value hooks and adds 0.01 on the
// way forward, so the order of the hooks shows in the stored value.
class ShapingListener : public gadu_test::RecordingListener
{
public:
    double value(double v, std::int32_t level) override { return RecordingListener::value(v, level) / 2.0; }
    double value_from_param(double v, std::int32_t level) override
    {
        return RecordingListener::value_from_param(v, level) / 4.0;
    }
    double forward(double v, std::int32_t /*level*/) override { return v + 0.01; }
};

class ControlValueTest : public gadu_test::ControlHarness
{
protected:
    void SetUp() override
    {
        knob.set_hit_rect(Rect{-10, -10, 10, 10});
        knob.set_position(20, 20);
        knob.set_listener(&shaping);
        group.add_control(knob);
        open();
    }

    ShapingListener shaping;
    Knob knob;
};

TEST_F(ControlValueTest, AUserChangePassesCheckValueAndForwardInThatOrder)
{
    EXPECT_TRUE(knob.set_value(0.6, 200));
    EXPECT_DOUBLE_EQ(knob.get_value(), 0.31);
    ASSERT_EQ(shaping.events.size(), 2u);
    EXPECT_EQ(shaping.events[0].what, "check");
    EXPECT_EQ(shaping.events[1].what, "value");
    EXPECT_EQ(shaping.events[1].level, 200);
    EXPECT_EQ(window.paint(), (Rect{10, 10, 30, 30}));

    // A change from the parameter side never reaches the user-side hook.
    EXPECT_TRUE(knob.set_value_from_param(0.8, 100));
    EXPECT_DOUBLE_EQ(knob.get_value(), 0.21);
    EXPECT_TRUE(shaping.of("param").size() == 1 && shaping.of("value").size() == 1);
}

TEST_F(ControlValueTest, ARefusalOrANonNumberChangesNothing)
{
    knob.set_value(0.5, 200);
    window.paint();
    shaping.refuse_below = 100;
    EXPECT_FALSE(knob.set_value(0.9, 50));
    EXPECT_FALSE(knob.set_value_from_param(0.9, 1));
    shaping.refuse_below = 0;
    EXPECT_FALSE(knob.set_value(std::numeric_limits<double>::quiet_NaN(), 200));
    EXPECT_FALSE(knob.set_value_from_param(std::nan(""), 200));
    EXPECT_DOUBLE_EQ(knob.get_value(), 0.26);
    EXPECT_TRUE(window.paint().is_empty());

    // Out of range is pulled in before any hook sees it.
    shaping.events.clear();
    knob.set_value(7.0, 200);
    EXPECT_DOUBLE_EQ(shaping.of("value")[0].value, 1.0);
}

TEST_F(ControlValueTest, GesturesAskBeforeTheyBeginAndAlwaysEnd)
{
    knob.touch(200);
    knob.release(200);
    shaping.refuse_below = 300;
    knob.touch(200);
    knob.release(200);
    EXPECT_EQ(shaping.outline(true), "cbece");
}

TEST_F(ControlValueTest, ChangingTheListenerFromItsOwnHookIsRefused)
{
    class Swapper : public gadu_test::RecordingListener
    {
    public:
        double forward(double v, std::int32_t /*level*/) override
        {
            use_control()->set_listener(nullptr);
            return v;
        }
    } swapper;
    knob.set_listener(&swapper);
    EXPECT_THROW(knob.set_value(0.5, 200), std::runtime_error);
    EXPECT_EQ(knob.use_listeners().size(), 1u);
    EXPECT_FALSE(knob.is_dispatching());
}

}  // namespace
}  // namespace gadu
