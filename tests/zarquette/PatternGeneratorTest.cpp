#include "zarquette/PatternGenerator.h"

#include <gtest/gtest.h>

#include <cmath>

#include <string>

namespace
{

using zarquette::Pattern;
using zarquette::PatternGenerator;
using zarquette::RndGen;

// One letter per step: S a stutter step (quarter-beat period, delay of at most
// 1/16 beat), H a hold step, '.' an inactive step.
std::string layout(const Pattern& p)
{
    std::string s;
    for (int i = 0; i < p.get_length(); ++i)
    {
        const Pattern::Step& step = p.use_step(i);
        const bool stutter = step.period == 0.25 && step.delay <= 1.0 / 16.0;
        s += !step.active ? '.' : (stutter ? 'S' : 'H');
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
    for (float nuke : {0.0f, 1.0f})
    {
        RndGen rnd;
        const int length = std::min(16 << rnd.gen_int(2), 32);
        ASSERT_EQ(length, 32);
        const Pattern p = generate(rnd, length, nuke);
        EXPECT_EQ(layout(p), "SSH.....SH......H.....SSSH......");
        EXPECT_EQ(rnd.get_state(), 500782188);  // 92 draws in all

        const Pattern::Step& s0 = p.use_step(0);
        EXPECT_EQ(s0.period, 0.25);
        EXPECT_DOUBLE_EQ(s0.delay, 0.010807934682816267);
        EXPECT_NEAR(s0.cutoff_start, 8.8617453, 1e-5);
        EXPECT_NEAR(s0.cutoff_end, 11.352648, 1e-5);
        const Pattern::Step& s2 = p.use_step(2);
        EXPECT_EQ(s2.period, 1.5);
        EXPECT_EQ(s2.delay, 1.5);
        if (nuke == 0.0f)
        {
            EXPECT_EQ(s0.resonance, 0.0f);
            EXPECT_NEAR(s0.drive, 0.76687312, 1e-5);
            EXPECT_NEAR(s2.cutoff_start, 11.311048, 1e-5);
            EXPECT_NEAR(s2.resonance, 0.18120545, 1e-5);
        }
        else
        {
            EXPECT_NEAR(s0.resonance, 0.24180068, 1e-5);
            EXPECT_NEAR(s0.drive, 0.99051346, 1e-5);
            EXPECT_NEAR(s2.cutoff_start, 8.3985296, 1e-5);
            EXPECT_NEAR(s2.resonance, 0.44185549, 1e-5);
        }
    }
}

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
            const Pattern::Step& step = p.use_step(s);
            if (!step.active)
            {
                ASSERT_EQ(step.period, -2.0);
                ASSERT_EQ(step.delay, -2.0);
                continue;
            }
            ASSERT_GT(step.delay, 0.0);
            ASSERT_LE(step.delay, step.period);
            ASSERT_LE(step.period, 4.0);
            ASSERT_GE(step.cutoff_start, 5.0f);
            ASSERT_LE(step.cutoff_start, 14.25f);
            ASSERT_GE(step.cutoff_end, 5.0f);
            ASSERT_LE(step.cutoff_end, 14.25f);
            ASSERT_GE(step.resonance, 0.0f);
            ASSERT_LE(step.resonance, 1.0f);
            ASSERT_GE(step.drive, 0.0f);
            ASSERT_LE(step.drive, 1.0f);
            const bool stutter = step.period == 0.25 && step.delay <= 1.0 / 16.0;
            if (stutter && nuke == 0.0f)
            {
                ASSERT_EQ(step.resonance, 0.0f);
            }
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
        ASSERT_GE(free, 1.0 / 256.0);
        ASSERT_LT(free, 1.0 / 16.0);
        lowest = std::min(lowest, free);

        const double table = gen.random_octave(-2, 0, true, true);
        ASSERT_GE(table, 0.25);
        ASSERT_LE(table, 1.0);
        const double scaled = table / std::exp2(std::floor(std::log2(table) + 1e-9));
        ASSERT_TRUE(scaled == 1.0 || std::fabs(scaled - 1.5) < 1e-12 || std::fabs(scaled - 4.0 / 3.0) < 1e-12)
            << table;
    }
    EXPECT_EQ(lowest, 1.0 / 256.0);  // k = lo forces the multiplier to 1
}

}  // namespace
