#include "zarquette/Beret.h"

#include "BeretRig.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <cmath>

#include <algorithm>

namespace
{

using beret_test::Buffers;
using zq_test::Noise;
using zarquette::Beret;

void fill_noise(std::vector<float>& v)
{
    Noise noise;
    std::generate(v.begin(), v.end(), [&] { return noise.next(); });
}

TEST(Beret, VinRougeSetsTheDriveOfTheLiveInput)
{
    Beret beret;
    const float expected[][2] = {{0.0f, 0.0f}, {0.03125f, 0.052734375f}, {0.0625f, 0.10546875f},
                                 {1.0f / 3.0f, 1.0f}, {1.0f, 256.0f}, {-1.0f, 0.0f}, {7.0f, 256.0f}};
    for (const auto& e : expected)
    {
        beret.set_vin_rouge(e[0]);
        EXPECT_FLOAT_EQ(beret.get_drive_gain(), e[1]) << e[0];
    }
    beret.set_vin_rouge(std::nanf(""));
    EXPECT_EQ(beret.get_drive_gain(), 0.0f);
}

TEST(Beret, DelayOfAQuarterSecondReadsExactlyThatFarBack)
{
    Beret beret;
    beret.set_delay(0.25);
    EXPECT_EQ(beret.use_delay().get_delay_int(), 11026);
    EXPECT_EQ(beret.use_delay().get_weights()[1], 1.0f);
    // 1/64 beat at 120 BPM: 344.53 samples, read between taps.
    beret.set_delay(0.0078125);
    EXPECT_EQ(beret.use_delay().get_delay_int(), 346);
    EXPECT_NE(beret.use_delay().get_weights()[2], 0.0f);
}

TEST(Beret, ClosedGateSilencesTheLiveInputAtVinRougeZero)
{
    Buffers a(8192);
    Buffers b(8192);
    fill_noise(a.in);
    Beret with_input;
    Beret without_input;
    with_input.set_buffers(a.out.data(), a.in.data(), a.scratch.data());
    without_input.set_buffers(b.out.data(), b.in.data(), b.scratch.data());
    with_input.render(0, 8192);  // gate closed from construction
    without_input.render(0, 8192);
    EXPECT_EQ(a.out, b.out);

    with_input.set_gate(true);
    with_input.render(0, 256);
    EXPECT_NE(a.out[100], b.out[100]);
}

TEST(Beret, ClosedGateDrivesAndClipsAsymmetricallyAtVinRougeOne)
{
    Buffers buf(4);
    buf.in = {0.001f, 0.5f, -0.5f, -0.002f};
    Beret beret;
    beret.set_buffers(buf.out.data(), buf.in.data(), buf.scratch.data());
    beret.set_vin_rouge(1.0f);
    beret.render(0, 4);
    EXPECT_FLOAT_EQ(buf.scratch[0], 0.256f);
    EXPECT_EQ(buf.scratch[1], 1.0f);
    EXPECT_EQ(buf.scratch[2], -1.25f);
    EXPECT_FLOAT_EQ(buf.scratch[3], -0.512f);
}

TEST(Beret, ResetClearsTheFilterButKeepsTheLoop)
{
    Buffers buf(44100);
    fill_noise(buf.in);
    Beret beret;
    beret.set_buffers(buf.out.data(), buf.in.data(), buf.scratch.data());
    beret.set_delay(0.1);
    beret.set_gate(true);
    beret.render(0, 44100);

    std::fill(buf.in.begin(), buf.in.end(), 0.0f);
    beret.reset();
    beret.set_gate(false);  // hold gain 0.75: the recorded tenth of a second repeats
    beret.render(0, 8820);
    float peak = 0.0f;
    for (int i = 4410; i < 8820; ++i)
    {
        peak = std::max(peak, std::fabs(buf.out[static_cast<std::size_t>(i)]));
    }
    EXPECT_GT(peak, 0.1f);
}

TEST(Beret, SurvivesNonFiniteInputAndGarbageSettings)
{
    Buffers buf(4096);
    fill_noise(buf.in);
    buf.in[10] = std::nanf("");
    buf.in[11] = INFINITY;
    buf.in[12] = -INFINITY;
    buf.in[13] = 1e30f;
    Beret beret;
    beret.set_buffers(buf.out.data(), buf.in.data(), buf.scratch.data());
    beret.set_sample_freq(std::nanf(""));
    beret.set_cutoff(std::nanf(""));
    beret.set_resonance(INFINITY);
    beret.set_drive(-3.0f);
    beret.set_hold_gain(std::nanf(""));
    beret.set_delay(-1.0);
    beret.set_vin_rouge(1.0f);
    beret.set_gate(true);
    for (int round = 0; round < 20; ++round)
    {
        beret.render(0, 4096);
        for (float y : buf.out)
        {
            ASSERT_TRUE(zq_test::is_clean(y));
            ASSERT_LT(std::fabs(y), 64.0f);
        }
    }
    EXPECT_EQ(beret.get_sample_freq(), 44100.0f);
    EXPECT_TRUE(beret.state_is_normal());
}

}  // namespace
