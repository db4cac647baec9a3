#include "zarquette/FastMath.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using zarquette::fast_exp2;
using zarquette::fast_log2;

TEST(FastMath, ExactWhereItMustBe)
{
    for (int e = -20; e <= 20; ++e)
    {
        EXPECT_EQ(fast_log2(std::ldexp(1.0f, e)), static_cast<float>(e));
        EXPECT_EQ(fast_exp2(static_cast<float>(e)), std::ldexp(1.0f, e));
    }
    EXPECT_NEAR(fast_log2(1.5f), 0.5833333f, 1e-6f);
}

TEST(FastMath, CloseToTheTrueFunctionsInBetween)
{
    for (float x = 0.01f; x < 100.0f; x *= 1.01f)
    {
        ASSERT_NEAR(fast_log2(x), std::log2(x), 0.01f) << x;
    }
    for (float x = -10.0f; x < 15.0f; x += 0.01f)
    {
        ASSERT_NEAR(fast_exp2(x) / std::exp2(x), 1.0f, 0.0035f) << x;
    }
}

TEST(FastMath, BothAreMonotonic)
{
    float last = fast_log2(0.001f);
    for (float x = 0.001f; x < 1000.0f; x *= 1.001f)
    {
        const float y = fast_log2(x);
        ASSERT_GE(y, last) << x;
        last = y;
    }
    last = fast_exp2(-20.0f);
    for (float x = -20.0f; x < 20.0f; x += 0.001f)
    {
        const float y = fast_exp2(x);
        ASSERT_GE(y, last) << x;
        last = y;
    }
}

TEST(FastMath, Exp2StaysFiniteAndPositiveForAnyArgument)
{
    for (float x : {-1e30f, -200.0f, 200.0f, 1e30f, INFINITY, -INFINITY, std::nanf("")})
    {
        const float y = fast_exp2(x);
        EXPECT_TRUE(std::isfinite(y)) << x;
        EXPECT_GT(y, 0.0f) << x;
    }
}

}  // namespace
