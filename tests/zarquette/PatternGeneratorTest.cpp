#include "zarquette/PatternGenerator.h"

#include "zarquette/RndGen.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <tuple>

namespace
{


using zarquette::Pattern;
using zarquette::PatternGenerator;
using zarquette::RndGen;

bool is_stutter(const Pattern::Step& step)
{
    return step.period == 0.25 && step.delay <= 1.0 / 16.0;
}

// One letter per step: S a stutter step (quarter-beat period, delay of at most
// 1/16 beat), H a hold step, '.' an inactive step.
std::string layout(const Pattern& p)
{
    std::string s;
    for (int i = 0; i < p.get_length(); ++i)
    {
        s += !p.use_step(i).active ? '.' : (is_stutter(p.use_step(i)) ? 'S' : 'H');
    }
    return s;
}

Pattern generate(RndGen& rnd, int length, float nuke)
{
    Pattern p;
    p.set_length(length);
    PatternGenerator(rnd, nuke).fill(p);
    return p;
}

// The values below were worked out independently of this code, by following the
// generator's draws from state 1 by hand in a separate model.
TEST(PatternGenerator, FirstPatternOfTheLoopEngineDrawsInOrder)
{
    for (const auto& [nuke, s0_resonance, s0_drive, s2_cutoff_start, s2_resonance] :
         {std::tuple{0.0f, 0.0f, 0.76687312f, 11.311048f, 0.18120545f}, {1.0f, 0.24180068f, 0.99051346f, 8.3985296f, 0.44185549f}})
    {
        RndGen rnd;
        ASSERT_EQ(rnd.gen_int(2), 1);  // the loop engine's draw of the length: 32
        const Pattern p = generate(rnd, 32, nuke);
        EXPECT_EQ(layout(p), "SSH.....SH......H.....SSSH......");
        EXPECT_EQ(rnd.get_state(), 500782188);  // 92 draws in all
        const Pattern::Step& s0 = p.use_step(0);
        const Pattern::Step& s2 = p.use_step(2);
        EXPECT_EQ(s0.period, 0.25);
        EXPECT_DOUBLE_EQ(s0.delay, 0.010807934682816267);
        EXPECT_NEAR(s0.cutoff_start, 8.8617453, 1e-5);
        EXPECT_NEAR(s0.cutoff_end, 11.352648, 1e-5);
        EXPECT_EQ(s2.period, 1.5);
        EXPECT_EQ(s2.delay, 1.5);
        EXPECT_NEAR(s0.resonance, s0_resonance, 1e-5) << nuke;
        EXPECT_NEAR(s0.drive, s0_drive, 1e-5) << nuke;
        EXPECT_NEAR(s2.cutoff_start, s2_cutoff_start, 1e-5) << nuke;
        EXPECT_NEAR(s2.resonance, s2_resonance, 1e-5) << nuke;
    }
}

// The patterns that follow, drawn as the loop engine draws them (a length,
// then the pattern), regular rhythms among them: their layouts and the
// generator's state at the end, from the same separate model.
TEST(PatternGenerator, ConsecutivePatternsKeepTheirRhythms)
{
    RndGen rnd;
    for (const char* expected :
         {"SSH.....SH......H.....SSSH......", "H...H...H...H...H...H...H...H...", "SH..SH..SH..SH..",
          "H...SH..H...H..S", "H.SH..SHH.....SHH.SH..SHH.SH..SH", "H...H...H...H...H...H...H...H...",
          "H.......H.......", "H.......H.......", "H.SHHSH.SH.SH.SHHSH.SH.SH.SHHSH.",
          "HSH.SH.SSHSHHSSH", "H.SHH.SHSSSSSSHS", "SH..SH..SH.SHSH.",
          "SHSHSHSHSHSHSHSHSHSHSHSHSHSHSH..", "SH......HSSH...S", "H.......H.......",
          "H...SSH.SSH.....", "H.......H....SH.", "SH..SH..SH..SH..SH..SH..SHSSSH..",
          "H...H.SSH...HSSSH...H...H...H...", "H.......H.......HSH...SSH.......", "HSH.SHSHSHSH.SH.",
          "H.......H.......H.......H.SH.SH.", "SH.SH.SHHSH.SH.SH.SH.SH.SH.SSSH.", "H...H...H...H..."})
    {
        const int length = std::min(16 << rnd.gen_int(2), 32);
        EXPECT_EQ(layout(generate(rnd, length, 0.0f)), expected);
    }
    EXPECT_EQ(rnd.get_state(), 1241229820);
}

bool within(double x, double lo, double hi)
{
    return x >= lo && x <= hi;
}

// Every active step has a positive delay within its period of at most four
// beats, cutoffs from 32 Hz to 19.5 kHz (log2 5 to 14.25), resonance and drive
// in [0, 1], and no resonance on a stutter without "Nuclear Power"; inactive
// steps keep period and delay -2, which are never applied.
TEST(PatternGenerator, EveryPatternKeepsItsInvariants)
{
    RndGen rnd;
    for (int round = 0; round < 2000; ++round)
    {
        const float nuke = static_cast<float>(round % 2);
        const Pattern p = generate(rnd, (round % 3) == 0 ? 32 : 16, nuke);
        ASSERT_TRUE(p.use_step(0).active);  // a hold span always starts active
        for (int s = 0; s < p.get_length(); ++s)
        {
            const Pattern::Step& st = p.use_step(s);
            const bool good = st.active ? st.delay > 0.0 && st.delay <= st.period && st.period <= 4.0
                                              && within(st.cutoff_start, 5.0, 14.25) && within(st.cutoff_end, 5.0, 14.25)
                                              && within(st.resonance, 0.0, 1.0) && within(st.drive, 0.0, 1.0)
                                              && !(is_stutter(st) && nuke == 0.0f && st.resonance != 0.0f)
                                        : st.period == -2.0 && st.delay == -2.0;
            ASSERT_TRUE(good) << "round " << round << ", step " << s << " of " << layout(p);
        }
    }
}

TEST(PatternGenerator, RandomOctaveStaysInItsRange)
{
    RndGen rnd;
    PatternGenerator gen(rnd, 0.0f);
    double lowest = 1.0;
    for (int i = 0; i < 5000; ++i)
    {
        const double free = gen.random_octave(-8, -4, false, false);
        ASSERT_TRUE(within(free, 1.0 / 256.0, 1.0 / 16.0) && free < 1.0 / 16.0) << free;
        lowest = std::min(lowest, free);
        // From the table: 1, 3/4 or 2/3 times a power of two.
        const double table = gen.random_octave(-2, 0, true, true);
        const double scaled = table / std::exp2(std::floor(std::log2(table) + 1e-9));
        ASSERT_TRUE(within(table, 0.25, 1.0)
                    && (scaled == 1.0 || std::fabs(scaled - 1.5) < 1e-12 || std::fabs(scaled - 4.0 / 3.0) < 1e-12))
            << table;
    }
    EXPECT_EQ(lowest, 1.0 / 256.0);  // k = lo forces the multiplier to 1
}

// The minimal standard generator from state 1: its first draws, the published
// check value of its 10000th state, every float in (0, 1). Without an amount
// a shaped draw is the uniform one. With amount 1 and centre 0.5 the cubic is
// symmetric and pulls most draws in around 0.5, where a uniform draw lands
// 20 % of the time; a high centre pushes the cluster up, towards
// m^3 / ((1 - m)^3 + m^3).
TEST(RndGen, MinimalStandardSequenceAndShapedDraws)
{
    RndGen g;
    EXPECT_EQ(g.gen_int(1000), 807);
    EXPECT_EQ(g.gen_int(1000), 249);
    EXPECT_EQ(g.get_state(), 282475249);
    RndGen shaped = g;
    RndGen centred;
    RndGen high;
    int near_middle = 0;
    double sum_high = 0.0;
    for (int i = 2; i < 10000; ++i)
    {
        const float f = g.gen_float();
        ASSERT_TRUE(f > 0.0f && f < 1.0f) << f;
        ASSERT_EQ(shaped.gen_shaped(i % 2 == 0 ? 0.9f : 0.1f, i % 2 == 0 ? 0.0f : -1.0f), f) << i;
        const float v = centred.gen_shaped(0.5f, 1.0f);
        ASSERT_TRUE(v >= -1e-6f && v <= 1.0f + 1e-6f) << v;
        near_middle += (v > 0.4f && v < 0.6f) ? 1 : 0;
        sum_high += high.gen_shaped(0.99f, 1.0f);
    }
    EXPECT_EQ(g.get_state(), 1043618065);
    EXPECT_GT(near_middle, 4000);
    EXPECT_GT(sum_high / 9998.0, 0.75);
}

}  // namespace
