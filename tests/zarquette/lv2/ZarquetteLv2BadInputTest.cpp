#include "Lv2Rig.h"

#include "sys/ClockPin.h"

#include <lv2/atom/atom.h>
#include <lv2/midi/midi.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace
{

using zq_test::Lv2Rig;
using zq_test::SequenceBytes;

bool all_finite(const std::vector<float>& v)
{
    for (const float x : v)
    {
        if (!std::isfinite(x))
        {
            return false;
        }
    }
    return true;
}

class ZarquetteLv2BadInput : public ::testing::Test
{
protected:
    const LV2_Descriptor& d = Lv2Rig::use_descriptor();
    sys::ClockPin clock{100.0};
    zq_test::UridMap map;
};

TEST_F(ZarquetteLv2BadInput, ARateThatIsNoRateGivesNoInstance)
{
    const LV2_Feature* none[] = {nullptr};
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
// and no crash where it cannot; without a second channel the effect runs mono.
TEST_F(ZarquetteLv2BadInput, UnconnectedPortsGiveSilenceAndAMissingSecondChannelMono)
{
    {
        // Connected whole, the cats are panned apart.
        Lv2Rig rig(map);
        rig.control("gauloises") = 100.0f;
        rig.control("oignons") = 100.0f;
        for (int b = 0; b < 100; ++b)
        {
            rig.run(256);
        }
        EXPECT_NE(rig.out_l, rig.out_r);
    }
    const LV2_Feature* none[] = {nullptr};
    LV2_Handle h = d.instantiate(&d, 44100.0, "/nowhere/", none);
    ASSERT_NE(h, nullptr);
    d.activate(h);
    d.run(h, 64);
    std::vector<float> out_l(64, 7.0f);
    std::vector<float> out_r(64, 7.0f);
    d.connect_port(h, 2, out_l.data());
    d.connect_port(h, 3, out_r.data());
    d.run(h, 64);
    EXPECT_EQ(out_l, std::vector<float>(64, 0.0f));
    EXPECT_EQ(out_r, std::vector<float>(64, 0.0f));
    std::vector<float> in_l(64, 0.5f);
    d.connect_port(h, 0, in_l.data());
    d.connect_port(h, 3, nullptr);
    out_r.assign(64, 7.0f);
    for (int b = 0; b < 20; ++b)
    {
        d.run(h, 64);
    }
    EXPECT_TRUE(all_finite(out_l));
    EXPECT_NE(out_l, std::vector<float>(64, 0.0f));
    EXPECT_EQ(out_r, std::vector<float>(64, 7.0f));
    d.connect_port(h, 999, out_r.data());
    d.deactivate(h);
    d.cleanup(h);
}

TEST_F(ZarquetteLv2BadInput, MidiThatIsNoChannelMessageOrIsCutShortIsSkipped)
{
    Lv2Rig rig(map);
    const std::uint32_t midi = map.id(LV2_MIDI__MidiEvent);
    SequenceBytes s(map.id(LV2_ATOM__Sequence));
    // NRPN 2 selected, then data entry cut short, in running status, as SysEx
    // and as a type no MIDI event has: Gauloises must not move.
    s.event(0, midi, {0xB0, 99, 0}).event(0, midi, {0xB0, 98, 2});
    s.event(1, midi, {0xB0, 6}).event(2, midi, {6, 127}).event(3, midi, {0xF0, 0xB0, 6, 127, 0xF7});
    s.event(4, map.id(LV2_ATOM__Chunk), {0xB0, 6, 127}).event(5, midi, {});
    rig.send(s);
    rig.run(64);
    EXPECT_EQ(rig.param(2), 0.0f);
    // A whole one does.
    SequenceBytes whole(map.id(LV2_ATOM__Sequence));
    whole.event(0, midi, {0xB0, 6, 127, 0xFF});
    rig.send(whole);
    rig.run(64);
    EXPECT_GT(rig.param(2), 0.99f);
}

// A block longer than any the host announced.
TEST_F(ZarquetteLv2BadInput, ALongBlock)
{
    Lv2Rig rig(map, 44100.0, false, 100000);
    std::fill(rig.in_l.begin(), rig.in_l.end(), 0.25f);
    rig.run(100000);
    EXPECT_TRUE(all_finite(rig.out_l));
}

}  // namespace
