#include "tests/basic/ScratchDir.h"
#include "tests/lumo/midi/MidiRecorder.h"

#include "lumo/midi/MidiMgr.h"
#include "sys/PersistentKeyList.h"

#include <gtest/gtest.h>

#include <cstdlib>

// The MIDI options live in the user's registry; here it is a scratch folder.
namespace
{

TEST(MidiInOrderTest, SwappedOrderSelectsRpnOneNotRpn128)
{
    zq_test::ScratchDir dir;
    ::setenv("XDG_CONFIG_HOME", dir.get_path().c_str(), 1);
    sys::PersistentKeyList("Velnor/Zq", true).set_string("NRPN Compatibility", "0");
    lumo::MidiMgr mgr;
    mgr.load_options("Zq");
    ASSERT_EQ(mgr.get_nrpn_compatibility(), 0);
    zq_test::TestMidiIn in;
    in.connect(nullptr, &mgr, nullptr);
    in.activate();
    in.dispatch(0xB0, 100, 0, 0.0);
    in.dispatch(0xB0, 101, 1, 0.0);
    EXPECT_EQ(in.channel_state(0).get_rpn_number(), 1);
    in.dispatch(0xB0, 98, 1, 0.0);
    in.dispatch(0xB0, 99, 2, 0.0);
    EXPECT_EQ(in.channel_state(0).get_nrpn_number(), 1 * 128 + 2);
    ::unsetenv("XDG_CONFIG_HOME");
}

}  // namespace
