// A control bound to a parameter through ListenerBase and MetaControl: the
// user's changes reach the host service with their level, the parameter
// side's changes reach the control and are never written back.
#include "lumo/gui/ListenerBase.h"
#include "lumo/gui/MetaControl.h"

#include "gadu/Knob.h"
#include "tests/lumo/SettingDspMixinStub.h"
#include "tests/lumo/gui/FakeHostGui.h"

#include <gtest/gtest.h>

namespace
{

class Bound : public ::testing::Test
{
protected:
    Bound()
    {
        listener.set_host(&host);
        listener.bind(3, &param);
        meta.bind(&knob, &listener);
    }

    lumo_test::FakeHostGui host;
    zq_test::NamedParam param{"Bof"};
    lumo::ListenerBase listener;
    gadu::Knob knob;
    lumo::MetaControl meta;
};

}  // namespace

TEST_F(Bound, AGestureTakesSetsAndReleasesTheParameterAtItsLevel)
{
    knob.touch(200);
    ASSERT_TRUE(knob.set_value(0.3, 200));
    knob.release(200);

    ASSERT_EQ(host.of("take").size(), 1u);
    EXPECT_EQ(host.of("take")[0].index, 3);
    const auto sets = host.of("set");
    ASSERT_EQ(sets.size(), 1u);
    EXPECT_EQ(sets[0].index, 3);
    EXPECT_EQ(sets[0].value, 0.3f);
    EXPECT_EQ(sets[0].level, 200);
    EXPECT_EQ(host.calls.back().what, "release");
    EXPECT_EQ(host.calls.back().level, 200);
}

// The host refuses changes below its threshold: from the user, and from the
// parameter side.
TEST_F(Bound, AChangeTheHostRefusesLeavesControlAndParameterAlone)
{
    host.refuse_below = 100;
    knob.set_value(0.25, 50);
    EXPECT_EQ(knob.get_value(), 0.0);
    EXPECT_TRUE(host.of("set").empty());
    ASSERT_EQ(host.of("is_free").size(), 1u);
    EXPECT_EQ(host.of("is_free")[0].level, 50);
    param.set_norm_value(0.9f);
    meta.refresh();
    EXPECT_EQ(knob.get_value(), 0.0);
}

TEST_F(Bound, ParameterSideUpdatesReachTheControlWithoutWritingBack)
{
    param.set_norm_value(0.75f);
    meta.refresh();
    EXPECT_DOUBLE_EQ(knob.get_value(), 0.75);
    meta.update(0.5, 100);
    EXPECT_DOUBLE_EQ(knob.get_value(), 0.5);
    EXPECT_TRUE(host.of("set").empty());
    EXPECT_EQ(param.get_norm(), 0.75f);
    // The refresh asks at the lowest level, the update at the one it was given.
    const auto asked = host.of("is_free");
    ASSERT_EQ(asked.size(), 2u);
    EXPECT_EQ(asked[0].level, 1);
    EXPECT_EQ(asked[1].level, 100);
}

TEST(ListenerBase, AnUnboundListenerLetsTheControlMoveAndWritesNothing)
{
    lumo_test::FakeHostGui host;
    lumo::ListenerBase listener;
    listener.set_host(&host);
    gadu::Knob knob;
    lumo::MetaControl meta;
    meta.bind(&knob, &listener);
    EXPECT_TRUE(knob.set_value(0.4, 200));
    EXPECT_DOUBLE_EQ(knob.get_value(), 0.4);
    EXPECT_TRUE(host.calls.empty());
    EXPECT_EQ(meta.use_param(), nullptr);
    meta.refresh();
    EXPECT_DOUBLE_EQ(knob.get_value(), 0.4);
}

TEST(MetaControl, RebindingKeepsAListenerThatIsFirstAndReplacesAnyOther)
{
    lumo::ListenerBase first;
    lumo::ListenerBase second;
    gadu::Knob knob;
    lumo::MetaControl meta;
    meta.bind(&knob, &first);
    meta.bind(&knob, &first);
    ASSERT_EQ(knob.use_listeners().size(), 1u);
    meta.bind(&knob, &second);
    ASSERT_EQ(knob.use_listeners().size(), 1u);
    EXPECT_EQ(knob.use_listeners()[0], &second);
    EXPECT_EQ(second.use_control(), &knob);
}
