#include "zarquette/RndGen.h"

#include <gtest/gtest.h>

namespace
{

// The minimal standard generator from state 1: its first draws, and the
// published check value of its 10000th state; every float lies in (0, 1).
TEST(RndGen, MinimalStandardSequenceFromStateOne)
{
    zarquette::RndGen g;
    EXPECT_EQ(g.gen_int(1000), 807);
    EXPECT_EQ(g.gen_int(1000), 249);
    EXPECT_EQ(g.get_state(), 282475249);
    for (int i = 2; i < 10000; ++i)
    {
        const float f = g.gen_float();
        ASSERT_GT(f, 0.0f);
        ASSERT_LT(f, 1.0f);
    }
    EXPECT_EQ(g.get_state(), 1043618065);
}

TEST(RndGen, ShapedWithoutAmountIsTheUniformDraw)
{
    zarquette::RndGen shaped;
    zarquette::RndGen plain;
    for (int i = 0; i < 100; ++i)
    {
        EXPECT_EQ(shaped.gen_shaped(0.9f, 0.0f), plain.gen_float());
        EXPECT_EQ(shaped.gen_shaped(0.1f, -1.0f), plain.gen_float());
    }
}

TEST(RndGen, ShapedFixedPointsAndClustering)
{
    // With amount 1 and centre 0.5 the cubic is symmetric: g(0.5) = 0.5, and draws
    // cluster around 0.5.
    zarquette::RndGen g;
    int near_middle = 0;
    for (int i = 0; i < 10000; ++i)
    {
        const float v = g.gen_shaped(0.5f, 1.0f);
        ASSERT_GE(v, -1e-6f);
        ASSERT_LE(v, 1.0f + 1e-6f);
        near_middle += (v > 0.4f && v < 0.6f) ? 1 : 0;
    }
    // A uniform draw lands there 20% of the time; the cubic pulls most draws in.
    EXPECT_GT(near_middle, 4000);

    // A high centre pushes draws up: the cluster sits near m^3/((1-m)^3+m^3).
    zarquette::RndGen h;
    double sum = 0.0;
    for (int i = 0; i < 10000; ++i)
    {
        sum += h.gen_shaped(0.99f, 1.0f);
    }
    EXPECT_GT(sum / 10000.0, 0.75);
}

}  // namespace
