#include "tests/sys/ScratchKeyStorePosix.h"
#include "tests/lumo/midi/MidiRecorder.h"

#include "lumo/midi/MidiMgr.h"
#include "sys/PersistentKeyList.h"

#include <gtest/gtest.h>

#include <utility>

// The MIDI options live in the user's registry; here it is a scratch folder.
namespace
{

::testing::Environment* const store = ::testing::AddGlobalTestEnvironment(new zq_test::ScratchKeyStore);

TEST(MidiInOrderTest, SwappedOrderSelectsRpnOneNotRpn128)
{
    sys::PersistentKeyList("Velnor/Zq", true).set_string("NRPN Compatibility", "0");
    lumo::MidiMgr mgr;
    mgr.load_options("Zq");
    ASSERT_EQ(mgr.get_nrpn_compatibility(), 0);
    zq_test::TestMidiIn in;
    in.connect(nullptr, &mgr, nullptr);
    in.activate();
    for (const auto& [controller, value] : {std::pair{100, 0}, {101, 1}, {98, 1}, {99, 2}})
    {
        in.dispatch(0xB0, controller, value, 0.0);
    }
    EXPECT_EQ(in.channel_state(0).get_rpn_number(), 1);
    EXPECT_EQ(in.channel_state(0).get_nrpn_number(), 1 * 128 + 2);

    // The echo uses the same order.
    zq_test::TestMidiOut out;
    out.connect(nullptr, &mgr, nullptr);
    mgr.set_output(&out);
    mgr.rpn_change(0, 300, 5);
    EXPECT_EQ(out.packets, (std::vector<std::string>{"B0 64 02 00", "B0 65 2C 00", "B0 06 00 00", "B0 26 05 00"}));
}

TEST(MidiOptionsTest, GarbageIsReplacedByTheDefaultAndAutobindZeroLearnsOnce)
{
    sys::PersistentKeyList("Velnor", true).set_string("Autobind Mode", "yes");
    lumo::MidiMgr mgr;
    mgr.load_options("Zq2");
    std::string text;
    sys::PersistentKeyList("Velnor", false).get_string("Autobind Mode", text);
    EXPECT_EQ(text, "1");
    sys::PersistentKeyList("Velnor/Zq2", false).get_string("NRPN Compatibility", text);
    EXPECT_EQ(text, "1");
    EXPECT_TRUE(mgr.use_options().is_loaded());

    ASSERT_EQ(mgr.use_options().set_autobind_mode(0), 0);
    mgr.set_pending_learn(2);
    int index = 0;
    float value = 0.0f;
    mgr.map_controller(20 * 65536, 0, index, value);
    EXPECT_EQ(mgr.get_pending_learn(), -1);
    mgr.map_controller(21 * 65536, 0, index, value);  // not learnt: drives nothing
    EXPECT_EQ(index, -1);
    EXPECT_EQ(mgr.get_id(2), 20 * 65536);
    mgr.reset();
    EXPECT_FALSE(mgr.use_options().is_loaded());
}

}  // namespace
