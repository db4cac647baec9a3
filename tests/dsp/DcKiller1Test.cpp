#include "dsp/DcKiller1.h"

#include "tests/dsp/Settled.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

namespace
{

// Without flush-to-zero, flushing once per block keeps the tail normal; a
// reset forgets the input that is left.
TEST(DcKiller1, ConstantDecaysToExactZeroWhenFlushedPerBlock)
{
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
    dc.reset();
    EXPECT_EQ(dc.filter(0.0f), 0.0f);
}

// 3 dB down at 5 Hz and flat at 1 kHz at any rate; rates that mean nothing
// leave the filter as it was.
TEST(DcKiller1, CutoffSitsAtFiveHertzAtEveryRate)
{
    for (float rate : {44100.0f, 192000.0f})
    {
        for (const auto& [hz, gain] : {std::pair{5.0, std::sqrt(0.5)}, {1000.0, 1.0}})
        {
            dsp::DcKiller1 dc;
            for (float f : {rate, 0.0f, -44100.0f, std::nanf(""), INFINITY})
            {
                dc.set_sample_freq(f);
            }
            const double rms = dsp_test::settled_rms(2 * static_cast<int>(rate),
                                                     [&](int i) { return dc.filter(dsp_test::sine(hz / rate, i)); });
            EXPECT_NEAR(std::sqrt(2.0) * rms, gain, 0.002) << rate << " Hz, " << hz << " Hz sine";
        }
    }
}

}  // namespace
