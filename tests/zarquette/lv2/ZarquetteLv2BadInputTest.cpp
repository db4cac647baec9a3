#include "Lv2Rig.h"

#include "sys/ClockPin.h"

#include <lv2/atom/atom.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace
{

using zq_test::Lv2Rig;

bool all_finite(const std::vector<float>& v)
{
    return std::all_of(v.begin(), v.end(), [](float x) { return std::isfinite(x); });
}

class ZarquetteLv2BadInput : public ::testing::Test
{
protected:
    const LV2_Descriptor& d = Lv2Rig::use_descriptor();
    const LV2_Feature* none[1] = {nullptr};
    sys::ClockPin clock{100.0};
    zq_test::UridMap map;
};

TEST_F(ZarquetteLv2BadInput, ARateThatIsNoRateGivesNoInstance)
{
    for (const double rate : {0.0, -44100.0, std::numeric_limits<double>::quiet_NaN(),
                              std::numeric_limits<double>::infinity(), 1e300})
    {
        EXPECT_EQ(d.instantiate(&d, rate, "/nowhere/", none), nullptr) << rate;
    }
    LV2_Handle h = d.instantiate(&d, 96000.0, "/nowhere/", none);
    ASSERT_NE(h, nullptr);
    d.cleanup(h);
}

// A host that runs before connecting gets silence where it can be written,
// and no crash where it cannot; without a second channel the effect runs
// mono. (Connected whole it is stereo: the end-to-end render is the VST 2
// build's, channel for channel.)
TEST_F(ZarquetteLv2BadInput, UnconnectedPortsGiveSilenceAndAMissingSecondChannelMono)
{
    LV2_Handle h = d.instantiate(&d, 44100.0, "/nowhere/", none);
    ASSERT_NE(h, nullptr);
    d.activate(h);
    d.run(h, 64);
    std::vector<float> in_l(64, 0.5f), out_l(64, 7.0f), out_r(64, 7.0f);
    d.connect_port(h, 2, out_l.data());
    d.connect_port(h, 3, out_r.data());
    d.run(h, 64);
    EXPECT_EQ(out_l, std::vector<float>(64, 0.0f));
    EXPECT_EQ(out_r, out_l);
    d.connect_port(h, 0, in_l.data());
    d.connect_port(h, 3, nullptr);
    out_r.assign(64, 7.0f);
    // A port the plug-in does not have, just past its last one, is no port.
    d.connect_port(h, static_cast<lumo::Lv2Plugin*>(h)->use_layout().get_atom_out() + 1, out_r.data());
    for (int b = 0; b < 20; ++b)
    {
        d.run(h, 64);
    }
    EXPECT_TRUE(all_finite(out_l));
    EXPECT_NE(out_l, std::vector<float>(64, 0.0f));
    EXPECT_EQ(out_r, std::vector<float>(64, 7.0f));
    d.deactivate(h);
    d.cleanup(h);
}

// NRPN 2 selected, then data entry cut short, in running status, as SysEx,
// empty and as a type no MIDI event has: Gauloises must not move; a whole
// one does. A block longer than any the host announced is rendered whole.
TEST_F(ZarquetteLv2BadInput, MidiThatIsNoChannelMessageOrIsCutShortIsSkippedAndLongBlocksRun)
{
    Lv2Rig rig(map, 44100.0, false, 100000);
    zq_test::Lv2Input junk = rig.input();
    junk.cc(0, 99, 0).cc(0, 98, 2).midi(1, {0xB0, 6}).midi(2, {6, 127}).midi(3, {0xF0, 0xB0, 6, 127, 0xF7});
    junk.event(4, map.id(LV2_ATOM__Chunk), {0xB0, 6, 127});
    junk.midi(5, {});
    rig.run(64, junk);
    EXPECT_EQ(rig.param(2), 0.0f);
    rig.run(64, rig.input().midi(0, {0xB0, 6, 127, 0xFF}));
    EXPECT_GT(rig.param(2), 0.99f);

    rig.feed(0.25f, 0.25f);
    rig.run(100000);
    EXPECT_TRUE(all_finite(rig.out_l));
}

}  // namespace
