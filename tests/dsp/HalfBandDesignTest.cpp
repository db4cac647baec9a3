#include "dsp/HalfBandDesign.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace
{

// The designs' own numbers are guarded by what they do: the resamplers'
// tests measure the pass band and the rejection of the loop engine's two.
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
