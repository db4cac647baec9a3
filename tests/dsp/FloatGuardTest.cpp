#include "dsp/FloatGuard.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{

constexpr float nan_f = std::numeric_limits<float>::quiet_NaN();
constexpr float inf_f = std::numeric_limits<float>::infinity();

// NaN is no value at all: it must come out as the neutral 0, not as the low
// end of the range (a clip range of [-1, 1] would turn it into full negative
// level, a loop clamp into a stuck -16).
TEST(FloatGuard, ClampFiniteTurnsNanIntoZeroAndClampsEverythingElse)
{
    EXPECT_EQ(dsp::clamp_finite(nan_f, -1.0f, 1.0f), 0.0f);
    EXPECT_EQ(dsp::clamp_finite(-nan_f, -16.0f, 16.0f), 0.0f);
    EXPECT_EQ(dsp::clamp_finite(std::numeric_limits<double>::quiet_NaN(), 0.0, 1.0), 0.0);
    // A range without 0 gives the point of the range nearest to 0.
    EXPECT_EQ(dsp::clamp_finite(nan_f, 4.0f, 100.0f), 4.0f);
    EXPECT_EQ(dsp::clamp_finite(nan_f, -100.0f, -4.0f), -4.0f);

    EXPECT_EQ(dsp::clamp_finite(inf_f, -1.0f, 1.0f), 1.0f);
    EXPECT_EQ(dsp::clamp_finite(-inf_f, -1.0f, 1.0f), -1.0f);
    EXPECT_EQ(dsp::clamp_finite(0.25f, -1.0f, 1.0f), 0.25f);
    EXPECT_EQ(dsp::clamp_finite(-3.0f, -1.0f, 1.0f), -1.0f);
}

}  // namespace
