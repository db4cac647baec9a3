#include "dsp/LimiterRms1p.h"

#include "tests/dsp/Settled.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

// The limiter as the loop engine sets it: RMS held at 0.75.
dsp::LimiterRms1p make_loop_limiter(float rate)
{
    dsp::LimiterRms1p limiter;
    limiter.set_sample_freq(rate);
    limiter.set_time(0.03f);
    limiter.set_levels(0.75f, 0.5625f);
    return limiter;
}

// A sine of RMS 0.5 passes untouched; once it stops, the detector falls to
// exact zero and silence stays silence.
TEST(LimiterRms1p, LeavesAQuietSignalUntouchedAndFallsToExactZero)
{
    dsp::LimiterRms1p limiter = make_loop_limiter(44100.0f);
    for (int i = 0; i < 44100; ++i)
    {
        const float x = static_cast<float>(std::sqrt(0.5)) * dsp_test::sine(440.0 / 44100.0, i);
        ASSERT_EQ(limiter.limit(x), x) << "sample " << i;
    }
    for (int i = 0; i < 44100 * 5; ++i)
    {
        ASSERT_EQ(limiter.limit(0.0f), 0.0f);
    }
    EXPECT_EQ(limiter.get_mean_square(), 0.0);
}

TEST(LimiterRms1p, HoldsAFullScaleSquareAtTheTargetRms)
{
    for (float rate : {44100.0f, 192000.0f})
    {
        dsp::LimiterRms1p limiter = make_loop_limiter(rate);
        const int half_period = static_cast<int>(rate / 200.0f);
        const double rms = dsp_test::settled_rms(static_cast<int>(rate), [&](int i) {
            return limiter.limit((i / half_period) % 2 != 0 ? 1.0f : -1.0f);
        });
        EXPECT_NEAR(rms, 0.75, 0.005) << rate;
    }
}

TEST(LimiterRms1p, GarbageSettingsGiveFiniteOutput)
{
    dsp::LimiterRms1p limiter;
    limiter.set_time(std::nanf(""));
    limiter.set_levels(std::nanf(""), -1.0f);
    limiter.set_sample_freq(0.0f);
    for (float x : {0.0f, 1e-30f, 1.0f, -40.0f, 0.0f})
    {
        EXPECT_TRUE(std::isfinite(limiter.limit(x)));
    }
    limiter.reset();
    EXPECT_EQ(limiter.get_mean_square(), 0.0);
}

}  // namespace
