// The delay line follows the sample rate: it holds the longest loop at the
// rate in use and no more, and only a rate change, on the host's thread, ever
// allocates; rendering at the new rate does not.
#include "zarquette/BeretCtrl.h"

#include "AllocationCounter.h"
#include "BeretRig.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

namespace
{

constexpr int kBlock = 256;

int delay_capacity(const zarquette::BeretCtrl& ctrl)
{
    return ctrl.use_loop().use_beret().use_delay().get_capacity();
}

TEST(BeretRateChange, DelayLineHoldsEightSecondsAtTheRateInUse)
{
    zarquette::BeretCtrl ctrl;
    for (float rate : {8000.0f, 44100.0f, 48000.0f, 96000.0f, 192000.0f, 384000.0f})
    {
        ctrl.set_sample_freq(rate);
        const double needed = 8.0 * rate + 4.0;
        EXPECT_GE(delay_capacity(ctrl), needed) << rate;
        // A power of two, so never more than twice what is needed.
        EXPECT_LT(delay_capacity(ctrl), 2.0 * needed) << rate;
    }
    ctrl.set_sample_freq(44100.0f);
    EXPECT_LE(delay_capacity(ctrl) * sizeof(float), 2u << 20);
}

TEST(BeretRateChange, OnlyTheRateChangeAllocates)
{
    beret_test::Buffers buf(kBlock);
    zq_test::Noise noise;
    for (float& x : buf.in)
    {
        x = noise.next();
    }
    zarquette::BeretCtrl ctrl;
    ctrl.set_buffers(buf.out.data(), buf.in.data(), buf.scratch.data());
    for (float rate : {192000.0f, 44100.0f, 48000.0f})
    {
        // Every setting changes on the way, each of which renews what it drives.
        ctrl.set_nuke(rate != 44100.0f);
        ctrl.set_vin_rouge(rate / 192000.0f);
        ctrl.set_tempo(rate / 1000.0f);
        {
            const AllocationCounter host_thread;
            ctrl.set_sample_freq(rate);
            ctrl.reset();
            // 44.1 and 48 kHz share a size: going from one to the other keeps
            // the line.
            EXPECT_EQ(host_thread.get_count() > 0, rate != 48000.0f) << rate;
        }
        const AllocationCounter audio_thread;
        for (int b = 0; b < 2000; ++b)
        {
            ctrl.render(kBlock);
        }
        EXPECT_EQ(audio_thread.get_count(), 0) << rate;
        for (float y : buf.out)
        {
            ASSERT_TRUE(zq_test::is_clean(y)) << rate;
        }
    }
}

}  // namespace
