#include "zarquette/LinearRamp.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

TEST(LinearRamp, GlidesOverItsTimeThenStops)
{
    zarquette::LinearRamp ramp;
    ramp.set_ramp_time(0.5f);
    ramp.set_value(10.0f);
    ramp.set_target(12.0f);
    ramp.advance(11025);  // a quarter of a second at 44100 Hz
    EXPECT_NEAR(ramp.get_value(), 11.0, 1e-9);
    ramp.advance(11024);
    EXPECT_LT(ramp.get_value(), 12.0);
    ramp.advance(100000);
    EXPECT_EQ(ramp.get_value(), 12.0);
    ramp.advance(100000);
    EXPECT_EQ(ramp.get_value(), 12.0);
}

TEST(LinearRamp, ZeroTimeJumps)
{
    zarquette::LinearRamp ramp;
    ramp.set_ramp_time(0.0f);
    ramp.set_value(1.0f);
    ramp.set_target(3.0f);
    EXPECT_EQ(ramp.get_value(), 3.0);
    ramp.set_ramp_time(std::nanf(""));
    ramp.set_target(5.0f);
    EXPECT_EQ(ramp.get_value(), 5.0);
}

TEST(LinearRamp, RateChangeKeepsTheGlideDuration)
{
    zarquette::LinearRamp ramp;
    ramp.set_ramp_time(1.0f);
    ramp.set_value(0.0f);
    ramp.set_target(1.0f);
    ramp.advance(22050);  // half way at 44100 Hz
    ramp.set_sample_freq(96000.0f);
    ramp.advance(24000);  // a quarter of a second more
    EXPECT_NEAR(ramp.get_value(), 0.75, 1e-9);
    ramp.set_sample_freq(-1.0f);  // ignored
    ramp.advance(24000);
    EXPECT_EQ(ramp.get_value(), 1.0);
}

}  // namespace
