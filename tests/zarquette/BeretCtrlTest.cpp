#include "zarquette/BeretCtrl.h"

#include "BeretRig.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using beret_test::Buffers;
using zarquette::BeretCtrl;

constexpr int kBlock = 256;
// At 120 BPM and 44100 Hz: a 32-step pass is 8 beats.
constexpr int kPass32 = 176400;

// An engine as the processor sets it up, at 120 BPM and 44100 Hz.
struct Engine
{
    Engine() : buf(kBlock)
    {
        fill_input();
        ctrl.set_buffers(buf.out.data(), buf.in.data(), buf.scratch.data());
        ctrl.set_sample_freq(44100.0f);
        ctrl.set_tempo(120.0f);
        ctrl.set_vin_rouge(0.5f);
        ctrl.reset();
    }

    void fill_input()
    {
        zq_test::Noise noise;
        for (float& x : buf.in)
        {
            x = noise.next();
        }
    }

    // Renders `total` samples in processor-sized pieces.
    void render(long total)
    {
        while (total > 0)
        {
            const int n = static_cast<int>(std::min<long>(total, kBlock));
            ctrl.render(n);
            total -= n;
        }
    }

    Buffers buf;
    BeretCtrl ctrl;
};

int step_start(int s)
{
    return static_cast<int>(std::floor(s * 22050.0 / 4.0));
}

TEST(BeretCtrl, FirstRenderAfterResetAppliesStepZeroOfANewPattern)
{
    Engine e;
    EXPECT_EQ(e.ctrl.use_rnd().get_state(), 1);
    e.ctrl.render(1);
    EXPECT_EQ(e.ctrl.get_cur_step(), 0);
    EXPECT_EQ(e.ctrl.use_pattern().get_length(), 32);
    // Step 0 is a stutter of 0.0108 beat in a quarter-beat cycle.
    EXPECT_EQ(e.ctrl.use_loop().get_delay_len(), 238);
    EXPECT_EQ(e.ctrl.use_loop().get_period_len(), 5512);
    EXPECT_NEAR(e.ctrl.get_cutoff_log2(), 8.8617453f, 1e-3f);
}

TEST(BeretCtrl, StepsStartOnTheSixteenthGrid)
{
    Engine e;
    long rendered = 0;
    for (int s = 1; s <= 9; ++s)
    {
        e.render(step_start(s) - rendered);
        EXPECT_EQ(e.ctrl.get_cur_step(), s - 1) << "before step " << s;
        e.ctrl.render(1);
        EXPECT_EQ(e.ctrl.get_cur_step(), s) << "at step " << s;
        rendered = step_start(s) + 1;
    }
}

TEST(BeretCtrl, PatternIsRenewedAfterEverySecondPass)
{
    Engine e;
    e.ctrl.render(1);
    const int first = e.ctrl.use_rnd().get_state();
    e.render(kPass32);  // into the second pass: same pattern
    EXPECT_EQ(e.ctrl.get_cur_step(), 0);
    EXPECT_EQ(e.ctrl.use_rnd().get_state(), first);
    e.render(kPass32 - 1);  // the last sample of the second pass
    EXPECT_EQ(e.ctrl.use_rnd().get_state(), first);
    e.ctrl.render(1);  // the third pass starts with a new pattern
    EXPECT_EQ(e.ctrl.get_cur_step(), 0);
    EXPECT_NE(e.ctrl.use_rnd().get_state(), first);
}

TEST(BeretCtrl, NuclearPowerChangeRenewsThePatternInPlace)
{
    Engine e;
    e.render(10000);
    const int before = e.ctrl.use_rnd().get_state();
    const float drive_before = e.ctrl.use_pattern().use_step(0).drive;
    e.ctrl.set_nuke(true);
    e.ctrl.render(1);
    EXPECT_NE(e.ctrl.use_rnd().get_state(), before);
    EXPECT_NE(e.ctrl.use_pattern().use_step(0).drive, drive_before);
    EXPECT_EQ(e.ctrl.get_cur_step(), 1);
    EXPECT_EQ(e.ctrl.get_pos(), 10001);
    EXPECT_EQ(e.ctrl.use_pattern().get_length(), 32);

    const int after = e.ctrl.use_rnd().get_state();
    e.render(100);  // nothing changed: no new pattern
    EXPECT_EQ(e.ctrl.use_rnd().get_state(), after);
}

TEST(BeretCtrl, TempoChangeKeepsTheBeatPhase)
{
    Engine e;
    e.render(8000);
    e.ctrl.set_tempo(60.0f);
    EXPECT_EQ(e.ctrl.get_pos(), 16000);
    EXPECT_EQ(e.ctrl.get_beat_len(), 44100.0);
    e.render(22050 - 16000);
    EXPECT_EQ(e.ctrl.get_cur_step(), 1);
    e.ctrl.render(1);
    EXPECT_EQ(e.ctrl.get_cur_step(), 2);
}

TEST(BeretCtrl, ResetStartsANewPatternWithoutReseeding)
{
    Engine e;
    e.render(30000);
    const int state = e.ctrl.use_rnd().get_state();
    e.ctrl.reset();
    EXPECT_EQ(e.ctrl.get_cur_step(), -1);
    EXPECT_EQ(e.ctrl.get_pos(), 0);
    e.ctrl.render(1);
    EXPECT_EQ(e.ctrl.get_cur_step(), 0);
    EXPECT_NE(e.ctrl.use_rnd().get_state(), state);
    EXPECT_NE(e.ctrl.use_rnd().get_state(), 500782188);
}

TEST(BeretCtrl, OddRatesAndTemposAreRefusedOrClamped)
{
    Engine e;
    e.ctrl.set_sample_freq(0.0f);
    e.ctrl.set_sample_freq(std::nanf(""));
    e.ctrl.set_tempo(std::nanf(""));
    EXPECT_EQ(e.ctrl.get_beat_len(), 22050.0);
    e.ctrl.set_tempo(1e9f);
    EXPECT_EQ(e.ctrl.get_beat_len(), 44100.0 * 60.0 / BeretCtrl::kMaxTempo);
    e.ctrl.set_tempo(-5.0f);
    EXPECT_EQ(e.ctrl.get_beat_len(), 44100.0 * 60.0 / BeretCtrl::kMinTempo);
    e.render(10000);
    EXPECT_GE(e.ctrl.get_cur_step(), 0);
}

TEST(BeretCtrl, FallingRateWithoutResetCatchesUpWithThePattern)
{
    Engine e;
    e.ctrl.set_sample_freq(192000.0f);
    e.render(150000);
    e.ctrl.set_sample_freq(44100.0f);  // the position now lies far past its step
    e.render(1000);
    EXPECT_LT(e.ctrl.get_pos(), e.ctrl.get_beat_len() * 8.0);
    for (float y : e.buf.out)
    {
        ASSERT_TRUE(zq_test::is_clean(y));
    }
}

}  // namespace
