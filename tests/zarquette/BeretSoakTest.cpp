#include "zarquette/BeretCtrl.h"

#include "BeretRig.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <tuple>

namespace
{

using beret_test::Buffers;
using zarquette::BeretCtrl;

// The bound this soak establishes for the engine's output. Full-scale inputs
// peak at 1.6 at most in practice, and silence stays exactly silent. The
// limiter's detector lets a single sample through at no more than
// 0.75 x sqrt(1 + 1/tan(pi / (rate x 0.03))) (15.4 at 44.1 kHz, 32 at 192 kHz),
// which only an input far above full scale can reach.
constexpr float kOutputBound = 4.0f;
// Each run goes through the 16 settings below for this long each, a whole bar
// at the slowest tempo: a simulated minute per signal and rate.
constexpr double kSecondsPerCorner = 4.0;

enum class Signal
{
    silence,
    noise,
    square,
    dc
};

// Sample t of the signal: a 110 Hz full-scale square, full-scale DC, noise.
float signal_at(Signal signal, long t, float rate, zq_test::Noise& noise)
{
    switch (signal)
    {
    case Signal::noise:
        return noise.next();
    case Signal::square:
        return (t / static_cast<long>(rate / 220.0f)) % 2 == 0 ? 1.0f : -1.0f;
    case Signal::dc:
        return 1.0f;
    case Signal::silence:
        break;
    }
    return 0.0f;
}

struct SoakResult
{
    float peak = 0.0f;
    long bad_samples = 0;
    long abnormal_blocks = 0;
};

SoakResult soak(Signal signal, float rate)
{
    constexpr int kBlock = 256;
    Buffers buf(kBlock);
    BeretCtrl ctrl;
    ctrl.set_buffers(buf.out.data(), buf.in.data(), buf.scratch.data());
    ctrl.set_sample_freq(rate);
    ctrl.reset();
    zq_test::Noise noise;
    long t = 0;
    SoakResult result;
    const long blocks_per_corner = static_cast<long>(kSecondsPerCorner * rate / kBlock);
    // Every corner of "Nuclear Power" x "Vin Rouge" x tempo, ordered so that
    // each setting changes while the engine runs.
    static const float kVin[] = {0.0f, 1.0f / 16.0f, 1.0f / 3.0f, 1.0f};
    for (int c = 0; c < 16; ++c)
    {
        ctrl.set_nuke((c & 1) != 0);
        ctrl.set_vin_rouge(kVin[(c >> 1) & 3]);
        ctrl.set_tempo((c & 8) != 0 ? 240.0f : 60.0f);
        for (long b = 0; b < blocks_per_corner; ++b)
        {
            for (float& x : buf.in)
            {
                x = signal_at(signal, t++, rate, noise);
            }
            ctrl.render(kBlock);
            for (float y : buf.out)
            {
                result.bad_samples += zq_test::is_clean(y) ? 0 : 1;
                result.peak = std::max(result.peak, std::fabs(y));
            }
            result.abnormal_blocks += ctrl.use_loop().use_beret().state_is_normal() ? 0 : 1;
        }
    }
    return result;
}

class BeretSoak : public testing::TestWithParam<std::tuple<Signal, float>>
{
};

TEST_P(BeretSoak, StaysFiniteNormalAndBounded)
{
    const SoakResult r = soak(std::get<0>(GetParam()), std::get<1>(GetParam()));
    EXPECT_EQ(r.bad_samples, 0);
    EXPECT_EQ(r.abnormal_blocks, 0);
    EXPECT_LE(r.peak, kOutputBound);
    RecordProperty("peak", std::to_string(r.peak));
}

std::string name_of(const testing::TestParamInfo<std::tuple<Signal, float>>& info)
{
    static const char* kNames[] = {"Silence", "Noise", "Square", "Dc"};
    return std::string(kNames[static_cast<int>(std::get<0>(info.param))]) + "At" +
           std::to_string(static_cast<int>(std::get<1>(info.param)));
}

// The rates hosts use, from telephone quality to the highest studio rate:
// coefficients and delay lengths meet their extremes at both ends. The
// sanitizer builds run many times slower and take the two ends only.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
const auto kSoakRates = testing::Values(8000.0f, 384000.0f);
#else
const auto kSoakRates = testing::Values(8000.0f, 44100.0f, 384000.0f);
#endif

INSTANTIATE_TEST_SUITE_P(SignalsAndRates, BeretSoak,
                         testing::Combine(testing::Values(Signal::silence, Signal::noise, Signal::square,
                                                          Signal::dc),
                                          kSoakRates),
                         name_of);

// A loud loop falling silent is where recursive states would decay into the
// denormal range; the engine's output must reach exact silence cleanly instead.
TEST(BeretSoak, LoudLoopFallingSilentDecaysCleanly)
{
    constexpr int kBlock = 256;
    Buffers buf(kBlock);
    BeretCtrl ctrl;
    ctrl.set_buffers(buf.out.data(), buf.in.data(), buf.scratch.data());
    ctrl.set_sample_freq(44100.0f);
    ctrl.set_tempo(120.0f);
    ctrl.set_vin_rouge(0.0f);
    ctrl.reset();
    zq_test::Noise noise;
    for (int b = 0; b < 44100 * 2 / kBlock; ++b)
    {
        for (float& x : buf.in)
        {
            x = noise.next();
        }
        ctrl.render(kBlock);
    }
    std::fill(buf.in.begin(), buf.in.end(), 0.0f);
    float last_peak = 1.0f;
    for (int b = 0; b < 44100 * 60 / kBlock; ++b)
    {
        ctrl.render(kBlock);
        last_peak = 0.0f;
        for (float y : buf.out)
        {
            ASSERT_TRUE(zq_test::is_clean(y)) << "block " << b;
            last_peak = std::max(last_peak, std::fabs(y));
        }
        ASSERT_TRUE(ctrl.use_loop().use_beret().state_is_normal()) << "block " << b;
    }
    EXPECT_LT(last_peak, 1e-20f);
}

}  // namespace
