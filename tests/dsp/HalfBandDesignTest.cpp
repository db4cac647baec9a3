#include "dsp/HalfBandDesign.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace
{

void expect_design(double transition, const std::vector<double>& expected)
{
    std::vector<double> coefs{0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5};
    dsp::design_half_band(coefs, 69.0, transition);
    ASSERT_EQ(coefs.size(), expected.size());
    for (std::size_t i = 0; i < coefs.size(); ++i)
    {
        // Stored as floats by the resamplers, so float precision is what matters.
        EXPECT_FLOAT_EQ(static_cast<float>(coefs[i]), static_cast<float>(expected[i])) << "coefficient " << i;
    }
}

TEST(HalfBandDesign, GentleAndSteepDesignsOfTheLoopEngine)
{
    expect_design(0.2, {0.081430023176615865, 0.31565984021665966, 0.70977080010247717});
    expect_design(0.01, {0.077115079832416222, 0.26596852652109459, 0.4820706250610472, 0.6651041532634957,
                         0.79682047133157974, 0.88410150855061587, 0.94125142777404713, 0.98200541418860754});
}

TEST(HalfBandDesign, StageCountFollowsAttenuationAndTransition)
{
    std::vector<double> coefs;
    dsp::design_half_band(coefs, 20.0, 0.45);
    EXPECT_EQ(coefs.size(), 1u);  // the smallest design: order 3

    std::vector<double> steeper;
    dsp::design_half_band(steeper, 120.0, 0.01);
    EXPECT_GT(steeper.size(), 8u);
    for (std::size_t i = 0; i < steeper.size(); ++i)
    {
        EXPECT_GT(steeper[i], 0.0);
        EXPECT_LT(steeper[i], 1.0);
        if (i > 0)
        {
            EXPECT_GT(steeper[i], steeper[i - 1]);
        }
    }
}

TEST(HalfBandDesign, MeaninglessArgumentsStillGiveAStableDesign)
{
    for (double transition : {-1.0, 0.0, 0.5, 3.0, std::nan("")})
    {
        std::vector<double> coefs;
        dsp::design_half_band(coefs, std::nan(""), transition);
        ASSERT_FALSE(coefs.empty());
        for (double c : coefs)
        {
            EXPECT_GT(c, 0.0);
            EXPECT_LT(c, 1.0);
        }
    }
}

}  // namespace
