#include "zarquette/BeretFilter.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using zarquette::BeretFilter;

constexpr double kPi = 3.14159265358979323846;
constexpr float kRate = 176400.0f;  // four times 44100

BeretFilter make_filter(float cutoff, float resonance, float drive)
{
    BeretFilter f;
    f.set_sample_freq(kRate);
    f.set_cutoff(cutoff);
    f.set_resonance(resonance);
    f.set_drive(drive);
    return f;
}

// Gain for a small sine (the nonlinearities stay out of the way), from the RMS
// of the settled output.
double sine_gain(BeretFilter& f, double hz)
{
    constexpr double kLevel = 0.01;
    const int n = static_cast<int>(kRate / 2.0f);
    double sum = 0.0;
    for (int i = 0; i < n; ++i)
    {
        const double y = f.process(static_cast<float>(kLevel * std::sin(2.0 * kPi * hz * i / kRate)));
        if (i >= n / 2)
        {
            sum += y * y;
        }
    }
    return std::sqrt(2.0 * sum / (n - n / 2)) / kLevel;
}

TEST(BeretFilter, FourPoleLowPassWithoutResonance)
{
    BeretFilter f = make_filter(1000.0f, 0.0f, 0.0f);
    EXPECT_NEAR(sine_gain(f, 50.0), 1.0, 0.01);
    f.reset();
    // Each of the four one-poles is 3 dB down at the cutoff.
    EXPECT_NEAR(sine_gain(f, 1000.0), 0.25, 0.01);
    f.reset();
    EXPECT_LT(sine_gain(f, 8000.0), 0.001);
}

TEST(BeretFilter, ResonanceLiftsTheCutoffRegion)
{
    BeretFilter plain = make_filter(2000.0f, 0.0f, 0.0f);
    BeretFilter resonant = make_filter(2000.0f, 0.6f, 0.0f);
    EXPECT_GT(sine_gain(resonant, 2000.0), 2.0 * sine_gain(plain, 2000.0));
}

TEST(BeretFilter, HugeInputCannotMakeTheStatesRunAway)
{
    // Left unguarded, the soft limit's fold turns a loud input at a high cutoff
    // into an exploding state.
    for (float q : {0.0f, 1.0f})
    {
        BeretFilter f = make_filter(19484.0f, q, 1.0f);
        for (int i = 0; i < 100000; ++i)
        {
            const float y = f.process((i / 400) % 2 != 0 ? 16.0f : -16.0f);
            ASSERT_TRUE(std::isfinite(y)) << i;
            ASSERT_LE(std::fabs(y), 8.0f) << i;
        }
        EXPECT_TRUE(f.state_is_normal());
    }
}

// Returns the last output after a burst of sound and a long silence, checking
// every output on the way.
float ring_out(BeretFilter& f)
{
    for (int i = 0; i < 10000; ++i)
    {
        f.process(std::sin(0.01f * static_cast<float>(i)));
    }
    float y = 1.0f;
    for (int i = 0; i < 2000000; ++i)
    {
        y = f.process(0.0f);
        EXPECT_NE(std::fpclassify(y), FP_SUBNORMAL) << i;
        if (std::fpclassify(y) == FP_SUBNORMAL)
        {
            break;
        }
    }
    EXPECT_TRUE(f.state_is_normal());
    return y;
}

TEST(BeretFilter, SilenceAfterSoundDecaysAway)
{
    // Not to exact zero: the feedback works around an offset of 0.125, whose float
    // grain (7.5e-9) leaves a residue far below hearing.
    BeretFilter f = make_filter(300.0f, 0.5f, 0.0f);
    EXPECT_LT(std::fabs(ring_out(f)), 1e-7f);
}

TEST(BeretFilter, SelfOscillationStaysClean)
{
    // Strong resonance and a quantised feedback at full drive keep ringing on
    // their own; that is the sound, but it must stay finite and normal.
    BeretFilter f = make_filter(300.0f, 0.9f, 1.0f);
    EXPECT_LE(std::fabs(ring_out(f)), 8.0f);
}

TEST(BeretFilter, GarbageSettingsAreClamped)
{
    BeretFilter f = make_filter(std::nanf(""), INFINITY, -INFINITY);
    f.set_sample_freq(-1.0f);
    for (int i = 0; i < 1000; ++i)
    {
        ASSERT_TRUE(std::isfinite(f.process(0.5f)));
    }
    f.set_cutoff(1e9f);
    for (int i = 0; i < 1000; ++i)
    {
        ASSERT_TRUE(std::isfinite(f.process(0.5f)));
    }
}

}  // namespace
