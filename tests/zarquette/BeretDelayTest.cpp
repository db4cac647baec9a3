#include "zarquette/BeretDelay.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

TEST(BeretDelay, WholeDelayReturnsTheSampleWrittenThatLongAgo)
{
    zarquette::BeretDelay line(1 << 16);
    line.set_gain(1.0f);
    line.set_delay(11025.0);
    EXPECT_EQ(line.get_delay_int(), 11026);
    EXPECT_EQ(line.get_weights()[0], 0.0f);
    EXPECT_EQ(line.get_weights()[1], 1.0f);
    EXPECT_EQ(line.get_weights()[2], 0.0f);
    EXPECT_EQ(line.get_weights()[3], 0.0f);
    for (int t = 0; t < 30000; ++t)
    {
        const float expected = t >= 11025 ? static_cast<float>(t - 11025) : 0.0f;
        ASSERT_EQ(line.read(), expected) << t;
        line.write(static_cast<float>(t));
    }
}

TEST(BeretDelay, FractionalDelayInterpolatesACubicExactly)
{
    // Four-point Lagrange interpolation reproduces any cubic.
    auto cubic = [](double t) {
        const double u = t / 1000.0;
        return ((0.9 * u - 1.7) * u + 0.6) * u - 0.2;
    };
    for (double delay : {4.0, 37.25, 100.5, 999.9})
    {
        zarquette::BeretDelay line(4096);
        line.set_gain(0.5f);
        line.set_delay(delay);
        for (int t = 0; t < 1200; ++t)
        {
            if (t > 1100)
            {
                ASSERT_NEAR(line.read(), 0.5 * cubic(t - delay), 1e-6) << delay << " at " << t;
            }
            line.write(static_cast<float>(cubic(t)));
        }
    }
}

TEST(BeretDelay, DelaysBeyondTheBufferOrTapsAreClamped)
{
    zarquette::BeretDelay line(1000);
    EXPECT_EQ(line.get_capacity(), 1024);
    line.set_delay(1e9);
    EXPECT_EQ(line.get_delay_int(), 1024);
    line.set_delay(-5.0);
    EXPECT_EQ(line.get_delay_int(), 4);
    line.set_delay(std::nan(""));
    EXPECT_EQ(line.get_delay_int(), 4);
}

}  // namespace
