#include "zarquette/CatArmy.h"

#include "sys/ClockPin.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <tuple>
#include <utility>
#include <vector>

namespace
{

using zarquette::CatArmy;
using zarquette::SampleSet;
using Groups = std::vector<std::pair<int, int>>;  // {first, count}

// The voices on the 1st, 8th, 15th, 22nd and 29th of the month, the cats on
// the other days, each set in its groups; all of it loaded.
TEST(CatArmy, TheSetFollowsTheDayOfTheMonth)
{
    for (const auto& [day, groups] : {std::pair{8, Groups{{0, 58}, {58, 101}}}, {9, Groups{{0, 51}, {51, 30}, {81, 12}}}})
    {
        const sys::ClockPin pin(0.0, sys::LocalTime{2026, 11, day, 9, 0, 0});
        const CatArmy army;
        Groups loaded;
        for (int g = 0; g < army.get_nbr_groups(); ++g)
        {
            loaded.emplace_back(army.use_group(g).first, army.use_group(g).count);
        }
        EXPECT_EQ(loaded, groups) << day;
        const int recordings = groups.back().first + groups.back().second;
        EXPECT_EQ(army.use_player().get_nbr_recordings(), recordings) << day;
        EXPECT_GT(army.use_player().use_recording(recordings - 1).get_nbr_frames(), 0u) << day;
    }
    for (int d = 1; d <= 31; ++d)
    {
        const bool voice_day = d == 1 || d == 8 || d == 15 || d == 22 || d == 29;
        EXPECT_EQ(CatArmy::get_sample_set(d).size, voice_day ? 159 : 93) << d;
    }
    const zarquette::SampleSetEntry entries[] = {{"meow", 0}, {"no such cat", 1}, {"cathiss", 2}};
    EXPECT_THROW(CatArmy(SampleSet{entries, 3}), std::runtime_error);
}

TEST(CatArmy, OignonsSetsTheOddsTheGroupsAndThePanSpread)
{
    CatArmy army(SampleSet::get_cats());
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const auto& [o, odds, centre, group_spread, pan_spread] :
         {std::tuple{0.0f, 1000, 0.001f, 1.0f, 1.0f}, {0.4f, 158, 0.001f, 0.7f, 0.6f}, {0.5f, 100, 0.125f, 0.625f, 0.5f},
          {0.75f, 32, 0.4375f, 0.4375f, 0.25f}, {1.0f, 10, 0.75f, 0.25f, 0.0f}, {nan, 1000, 0.001f, 1.0f, 1.0f},
          {-2.0f, 1000, 0.001f, 1.0f, 1.0f}, {3.0f, 10, 0.75f, 0.25f, 0.0f}})
    {
        army.set_oignons(o);
        EXPECT_EQ(army.get_trigger_odds(), odds) << o;
        EXPECT_FLOAT_EQ(army.get_group_centre(), centre) << o;
        EXPECT_FLOAT_EQ(army.get_group_spread(), group_spread) << o;
        EXPECT_FLOAT_EQ(army.get_pan_spread(), pan_spread) << o;
    }
}

// One tick every hundredth of a second of the rate in use, counted across
// render calls: at 44.1 kHz the ticks fall at frames 0, 441, 882, each one
// draw of the generator (16807, 282475249, 1622650073 from state 1); a reset
// starts the count again, not the generator.
TEST(CatArmy, TicksEveryHundredthOfASecondAcrossRenderCalls)
{
    CatArmy army(SampleSet::get_cats());
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const auto& [rate, tick] : {std::pair{48000.0f, 480}, {22050.0f, 221}, {10.0f, 1}, {nan, 1}, {-8.0f, 1}})
    {
        army.set_sample_freq(rate);
        EXPECT_EQ(army.get_tick_len(), tick) << rate;
    }

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
// army's choices repeat from run to run: the first three starts from a fresh
// generator, as this order gives them, at 100 Hz, where every frame is a tick.
TEST(CatArmy, DrawsTriggerGroupRecordingAndPanInThatOrder)
{
    CatArmy army(SampleSet::get_cats());
    float left = 0.0f;
    float right = 0.0f;
    army.set_buffers(&left, &right);
    army.set_sample_freq(100.0f);
    army.set_oignons(1.0f);
    std::vector<std::pair<long, float>> starts;  // recording index, pan
    while (starts.size() < 3)
    {
        army.render(1);
        const zarquette::SampleVoice& v = army.use_player().use_voice(0);
        if (v.is_busy())
        {
            starts.emplace_back(v.use_recording() - &army.use_player().use_recording(0), 1.0f - 2.0f * v.get_left_gain());
        }
        army.reset();
    }
    EXPECT_EQ(starts[0].first, 12);
    EXPECT_EQ(starts[1].first, 63);
    EXPECT_EQ(starts[2].first, 3);
    EXPECT_NEAR(starts[0].second, 0.357729f, 1e-5f);
    EXPECT_NEAR(starts[1].second, -0.930856f, 1e-5f);
}

}  // namespace
