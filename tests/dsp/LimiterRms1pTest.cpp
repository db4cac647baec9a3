#include "dsp/LimiterRms1p.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

constexpr double kPi = 3.14159265358979323846;

dsp::LimiterRms1p make_loop_limiter(float rate)
{
    dsp::LimiterRms1p limiter;
    limiter.set_sample_freq(rate);
    limiter.set_time(0.03f);
    limiter.set_levels(0.75f, 0.5625f);
    return limiter;
}

TEST(LimiterRms1p, LeavesAQuietSignalUntouched)
{
    dsp::LimiterRms1p limiter = make_loop_limiter(44100.0f);
    for (int i = 0; i < 44100; ++i)
    {
        // RMS 0.5, well under the threshold of 0.75.
        const float x = static_cast<float>(std::sqrt(2.0) * 0.5 * std::sin(2.0 * kPi * 440.0 * i / 44100.0));
        ASSERT_EQ(limiter.limit(x), x) << "sample " << i;
    }
}

TEST(LimiterRms1p, HoldsAFullScaleSquareAtTheTargetRms)
{
    for (float rate : {44100.0f, 192000.0f})
    {
        dsp::LimiterRms1p limiter = make_loop_limiter(rate);
        double sum = 0.0;
        const int n = static_cast<int>(rate);
        const int period = static_cast<int>(rate / 100.0f);
        for (int i = 0; i < n; ++i)
        {
            const float y = limiter.limit((i / (period / 2)) % 2 != 0 ? 1.0f : -1.0f);
            if (i >= n / 2)
            {
                sum += static_cast<double>(y) * y;
            }
        }
        EXPECT_NEAR(std::sqrt(sum / (n - n / 2)), 0.75, 0.005) << rate;
    }
}

TEST(LimiterRms1p, DetectorFallsToExactZeroInSilence)
{
    dsp::LimiterRms1p limiter = make_loop_limiter(44100.0f);
    for (int i = 0; i < 1000; ++i)
    {
        limiter.limit(0.9f);
    }
    for (int i = 0; i < 44100 * 5; ++i)
    {
        ASSERT_EQ(limiter.limit(0.0f), 0.0f);
    }
    EXPECT_EQ(limiter.get_mean_square(), 0.0);
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
