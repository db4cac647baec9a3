#include "zarquette/CatArmy.h"

#include "sys/ClockPin.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using zarquette::CatArmy;
using zarquette::SampleSet;
using zarquette::SampleSetEntry;

sys::LocalTime day(int d)
{
    return sys::LocalTime{2026, 11, d, 9, 0, 0};
}

int group_of(const CatArmy& army, int index)
{
    int g = 0;
    while (g + 1 < army.get_nbr_groups() && index >= army.use_group(g + 1).first)
    {
        ++g;
    }
    return g;
}

int index_of(const CatArmy& army, const zarquette::WavFile* recording)
{
    return static_cast<int>(recording - &army.use_player().use_recording(0));
}

// An army at 100 Hz, where every frame is a tick: render(1) runs exactly one.
struct TickRig
{
    explicit TickRig(float oignons)
    {
        army.set_buffers(&left, &right);
        army.set_sample_freq(100.0f);
        army.set_oignons(oignons);
    }
    // Runs one tick; the index of the recording it started, or -1.
    int tick()
    {
        army.render(1);
        const zarquette::SampleVoice& v = army.use_player().use_voice(0);
        const int index = v.is_busy() ? index_of(army, v.use_recording()) : -1;
        pan = 1.0f - 2.0f * v.get_left_gain();
        army.reset();
        return index;
    }
    CatArmy army{SampleSet::get_cats()};
    float left = 0.0f, right = 0.0f;
    float pan = 0.0f;  // of the last start
};

// The army built on this day: its recordings and groups as {first, count}.
void expect_set_of_day(int d, int recordings, const std::vector<CatArmy::Group>& groups)
{
    const sys::ClockPin pin(0.0, day(d));
    const CatArmy army;
    EXPECT_EQ(army.use_player().get_nbr_recordings(), recordings) << d;
    ASSERT_EQ(army.get_nbr_groups(), static_cast<int>(groups.size())) << d;
    for (std::size_t g = 0; g < groups.size(); ++g)
    {
        EXPECT_EQ(army.use_group(static_cast<int>(g)).first, groups[g].first) << d;
        EXPECT_EQ(army.use_group(static_cast<int>(g)).count, groups[g].count) << d;
    }
    EXPECT_GT(army.use_player().use_recording(recordings - 1).get_nbr_frames(), 0u) << d;
}

TEST(CatArmy, TheSetFollowsTheDayOfTheMonth)
{
    expect_set_of_day(8, 159, {{0, 58}, {58, 101}});
    expect_set_of_day(9, 93, {{0, 51}, {51, 30}, {81, 12}});
    for (int d = 1; d <= 31; ++d)
    {
        const bool voice_day = d == 1 || d == 8 || d == 15 || d == 22 || d == 29;
        EXPECT_EQ(CatArmy::get_sample_set(d).size, voice_day ? 159 : 93) << d;
    }
}

TEST(CatArmy, AMissingRecordingAbortsConstruction)
{
    const SampleSetEntry entries[] = {{"meow", 0}, {"no such cat", 1}, {"cathiss", 2}};
    EXPECT_THROW(CatArmy(SampleSet{entries, 3}), std::runtime_error);
}

TEST(CatArmy, OignonsSetsTheOddsTheGroupsAndThePanSpread)
{
    CatArmy army(SampleSet::get_cats());
    struct Case
    {
        float o;
        int odds;
        float centre, group_spread, pan_spread;
    };
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const Case cases[] = {{0.0f, 1000, 0.001f, 1.0f, 1.0f},   {0.4f, 158, 0.001f, 0.7f, 0.6f},
                          {0.5f, 100, 0.125f, 0.625f, 0.5f}, {0.75f, 32, 0.4375f, 0.4375f, 0.25f},
                          {1.0f, 10, 0.75f, 0.25f, 0.0f},    {nan, 1000, 0.001f, 1.0f, 1.0f},
                          {-2.0f, 1000, 0.001f, 1.0f, 1.0f}, {3.0f, 10, 0.75f, 0.25f, 0.0f}};
    for (const Case& c : cases)
    {
        army.set_oignons(c.o);
        EXPECT_EQ(army.get_trigger_odds(), c.odds) << c.o;
        EXPECT_FLOAT_EQ(army.get_group_centre(), c.centre) << c.o;
        EXPECT_FLOAT_EQ(army.get_group_spread(), c.group_spread) << c.o;
        EXPECT_FLOAT_EQ(army.get_pan_spread(), c.pan_spread) << c.o;
    }
}

// One tick every hundredth of a second of the rate in use, counted across
// render calls: at 44.1 kHz the ticks fall at frames 0, 441, 882, each one
// draw of the generator (16807, 282475249, 1622650073 from state 1); a reset
// starts the count again, not the generator.
TEST(CatArmy, TicksEveryHundredthOfASecondAcrossRenderCalls)
{
    CatArmy army(SampleSet::get_cats());
    for (const auto& [rate, tick] : {std::pair{48000.0f, 480}, {22050.0f, 221}, {10.0f, 1}})
    {
        army.set_sample_freq(rate);
        EXPECT_EQ(army.get_tick_len(), tick) << rate;
    }
    army.set_sample_freq(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(army.get_sample_freq(), 10.0f);

    std::vector<float> left(256), right(256);
    army.set_buffers(left.data(), right.data());
    army.set_sample_freq(44100.0f);
    army.reset();
    for (const auto& [state, pos] : {std::pair{16807, 256}, {282475249, 71}, {282475249, 327}, {1622650073, 142}})
    {
        army.render(256);
        EXPECT_EQ(army.use_rnd().get_state(), state);
        EXPECT_EQ(army.get_tick_pos(), pos);
    }
    army.reset();
    army.render(1);
    EXPECT_NE(army.use_rnd().get_state(), 1622650073);
}

// The draws come in a fixed order (trigger, group, recording, pan), so the
// army's choices repeat from run to run: the first starts from a fresh
// generator, as this order gives them.
TEST(CatArmy, DrawsTriggerGroupRecordingAndPanInThatOrder)
{
    TickRig rig(1.0f);
    std::vector<std::pair<int, float>> starts;
    while (starts.size() < 3)
    {
        const int index = rig.tick();
        if (index >= 0)
        {
            starts.emplace_back(index, rig.pan);
        }
    }
    ASSERT_EQ(starts[0].first, 12);
    EXPECT_EQ(starts[1].first, 63);
    EXPECT_EQ(starts[2].first, 3);
    EXPECT_NEAR(starts[0].second, 0.357729f, 1e-5f);
    EXPECT_NEAR(starts[1].second, -0.930856f, 1e-5f);
}

TEST(CatArmy, GroupSharesAndPanSpreadFollowOignons)
{
    struct Case
    {
        float o;
        double shares[3];
        double near_centre;  // share of pans within 0.25 of the centre
    };
    const Case cases[] = {{0.0f, {0.71, 0.17, 0.12}, 0.63},
                          {0.5f, {0.60, 0.26, 0.14}, -1.0},
                          {0.75f, {0.28, 0.49, 0.23}, -1.0},
                          {1.0f, {0.24, 0.39, 0.36}, 0.25}};
    const int wanted = 3000;
    for (const Case& c : cases)
    {
        TickRig rig(c.o);
        int counts[3] = {0, 0, 0};
        int near = 0;
        for (int n = 0; n < wanted;)
        {
            const int index = rig.tick();
            if (index >= 0)
            {
                ++counts[group_of(rig.army, index)];
                near += std::fabs(rig.pan) <= 0.25f;
                ++n;
            }
        }
        for (int g = 0; g < 3; ++g)
        {
            EXPECT_NEAR(counts[g] / double(wanted), c.shares[g], 0.03) << "o " << c.o << " group " << g;
        }
        if (c.near_centre >= 0.0)
        {
            EXPECT_NEAR(near / double(wanted), c.near_centre, 0.03) << "o " << c.o;
        }
    }
}

}  // namespace
