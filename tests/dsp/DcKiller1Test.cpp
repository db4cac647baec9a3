#include "dsp/DcKiller1.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

constexpr double kPi = 3.14159265358979323846;

// Peak of the filter's settled response to a sine.
double sine_gain(dsp::DcKiller1& dc, float rate, double hz)
{
    double peak = 0.0;
    const int n = static_cast<int>(rate) * 2;
    for (int i = 0; i < n; ++i)
    {
        const float y = dc.filter(static_cast<float>(std::sin(2.0 * kPi * hz * i / rate)));
        if (i > n / 2)
        {
            peak = std::max(peak, std::fabs(static_cast<double>(y)));
        }
    }
    return peak;
}

TEST(DcKiller1, ConstantDecaysToExactZeroWhenFlushedPerBlock)
{
    // Without flush-to-zero, flushing once per block keeps the tail normal.
    dsp::DcKiller1 dc;
    float y = dc.filter(1.0f);
    EXPECT_NEAR(y, 1.0f, 1e-3f);
    for (int block = 0; block < 44100 * 10 / 256; ++block)
    {
        for (int i = 0; i < 256; ++i)
        {
            y = dc.filter(1.0f);
        }
        dc.flush_state();
        ASSERT_NE(std::fpclassify(y), FP_SUBNORMAL) << "block " << block;
    }
    EXPECT_EQ(y, 0.0f);
}

TEST(DcKiller1, CutoffSitsAtFiveHertzAtEveryRate)
{
    for (float rate : {44100.0f, 192000.0f})
    {
        dsp::DcKiller1 dc;
        dc.set_sample_freq(rate);
        EXPECT_NEAR(sine_gain(dc, rate, 5.0), std::sqrt(0.5), 0.01) << rate;
        dc.reset();
        EXPECT_NEAR(sine_gain(dc, rate, 1000.0), 1.0, 0.001) << rate;
    }
}

TEST(DcKiller1, UnusableRatesAreIgnored)
{
    dsp::DcKiller1 dc;
    for (float rate : {0.0f, -44100.0f, std::nanf(""), INFINITY})
    {
        dc.set_sample_freq(rate);
        EXPECT_EQ(dc.get_sample_freq(), 44100.0f);
    }
}

TEST(DcKiller1, ResetForgetsThePast)
{
    dsp::DcKiller1 dc;
    for (int i = 0; i < 100; ++i)
    {
        dc.filter(0.8f);
    }
    dc.reset();
    EXPECT_EQ(dc.filter(0.0f), 0.0f);
}

}  // namespace
