#include "zarquette/BeretCtrl.h"

#include "BeretRig.h"
#include "zarquette/FastMath.h"
#include "zarquette/LinearRamp.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <tuple>
#include <utility>

namespace
{

using beret_test::Engine;
using zarquette::BeretCtrl;
using zarquette::fast_exp2;
using zarquette::fast_log2;

// At 120 BPM and 44100 Hz: a 32-step pass is 8 beats.
constexpr int kPass32 = 176400;

// After a reset the first render applies step 0 of a new pattern: the first
// from the generator's state 1 (32 steps, step 0 a stutter of 0.0108 beat in
// a quarter-beat cycle), later ones from where the generator stands, never
// reseeded (it stands at 500782188 after the first). Steps start on the
// sixteenth grid, step s at floor(s x 22050 / 4).
TEST(BeretCtrl, AfterAResetStepsOfANewPatternStartOnTheSixteenthGrid)
{
    Engine e;
    EXPECT_EQ(e.ctrl.use_rnd().get_state(), 1);
    e.ctrl.render(1);
    EXPECT_EQ(e.ctrl.get_cur_step(), 0);
    EXPECT_EQ(e.ctrl.use_pattern().get_length(), 32);
    EXPECT_EQ(e.ctrl.use_loop().get_delay_len(), 238);
    EXPECT_EQ(e.ctrl.use_loop().get_period_len(), 5512);
    EXPECT_NEAR(e.ctrl.get_cutoff_log2(), 8.8617453f, 1e-3f);
    for (int s = 1; s <= 9; ++s)
    {
        e.render(static_cast<int>(std::floor(s * 22050.0 / 4.0)) - e.ctrl.get_pos());
        EXPECT_EQ(e.ctrl.get_cur_step(), s - 1) << "before step " << s;
        e.ctrl.render(1);
        EXPECT_EQ(e.ctrl.get_cur_step(), s) << "at step " << s;
    }
    e.ctrl.reset();
    EXPECT_EQ(e.ctrl.get_cur_step(), -1);
    EXPECT_EQ(e.ctrl.get_pos(), 0);
    e.ctrl.render(1);
    EXPECT_EQ(e.ctrl.get_cur_step(), 0);
    EXPECT_NE(e.ctrl.use_rnd().get_state(), 500782188);
}

// A new pattern is drawn after every second pass, and at once, in place, when
// "Nuclear Power" changes; otherwise the generator stands still.
TEST(BeretCtrl, PatternIsRenewedAfterEverySecondPassAndOnNuclearPower)
{
    Engine e;
    e.ctrl.render(1);
    const int first = e.ctrl.use_rnd().get_state();
    e.render(2 * kPass32 - 1);  // the last sample of the second pass
    EXPECT_EQ(e.ctrl.use_rnd().get_state(), first);
    e.ctrl.render(1);  // the third pass starts with a new pattern
    EXPECT_EQ(e.ctrl.get_cur_step(), 0);
    const int third = e.ctrl.use_rnd().get_state();
    EXPECT_NE(third, first);

    e.render(9999);
    const float drive_before = e.ctrl.use_pattern().use_step(0).drive;
    e.ctrl.set_nuke(true);
    e.ctrl.render(1);
    EXPECT_NE(e.ctrl.use_rnd().get_state(), third);
    EXPECT_NE(e.ctrl.use_pattern().use_step(0).drive, drive_before);
    EXPECT_EQ(e.ctrl.get_cur_step(), 1);
    EXPECT_EQ(e.ctrl.get_pos(), 10001);
    const int after = e.ctrl.use_rnd().get_state();
    e.render(100);
    EXPECT_EQ(e.ctrl.use_rnd().get_state(), after);
}

TEST(BeretCtrl, TempoChangeKeepsTheBeatPhase)
{
    Engine e;
    e.render(8000);
    e.ctrl.set_tempo(60.0f);
    EXPECT_EQ(e.ctrl.get_pos(), 16000);
    EXPECT_EQ(e.ctrl.get_beat_len(), 44100.0);
    e.render(22050 - 16000);
    EXPECT_EQ(e.ctrl.get_cur_step(), 1);
    e.ctrl.render(1);
    EXPECT_EQ(e.ctrl.get_cur_step(), 2);
}

// Rates that are no rate are refused and tempos clamped; a rate that falls
// without a reset leaves the position far past its step, from where the
// engine catches up with the pattern.
TEST(BeretCtrl, OddRatesAndTemposAreRefusedOrClamped)
{
    Engine e(192000.0f);
    e.ctrl.set_sample_freq(0.0f);
    e.ctrl.set_sample_freq(std::nanf(""));
    e.ctrl.set_tempo(std::nanf(""));
    EXPECT_EQ(e.ctrl.get_beat_len(), 96000.0);
    e.render(150000);
    e.ctrl.set_sample_freq(44100.0f);
    EXPECT_TRUE(e.render(1000));
    EXPECT_LT(e.ctrl.get_pos(), e.ctrl.get_beat_len() * 8.0);
    e.ctrl.set_tempo(1e9f);
    EXPECT_EQ(e.ctrl.get_beat_len(), 44100.0 * 60.0 / BeretCtrl::kMaxTempo);
    e.ctrl.set_tempo(-5.0f);
    EXPECT_EQ(e.ctrl.get_beat_len(), 44100.0 * 60.0 / BeretCtrl::kMinTempo);
    EXPECT_TRUE(e.render(10000));
    EXPECT_GE(e.ctrl.get_cur_step(), 0);
}

// The cutoff's glide: it covers its time at the rate in use (also across a
// change of rate) and stops on its target; without a time it jumps there.
TEST(LinearRamp, GlidesOverItsTimeThenStops)
{
    zarquette::LinearRamp ramp;
    ramp.set_ramp_time(1.0f);
    ramp.set_value(0.0f);
    ramp.set_target(1.0f);
    ramp.advance(22050);  // half way at 44100 Hz
    ramp.set_sample_freq(96000.0f);
    ramp.set_sample_freq(-1.0f);  // ignored
    ramp.advance(24000);          // a quarter of a second more
    EXPECT_NEAR(ramp.get_value(), 0.75, 1e-9);
    ramp.advance(23999);
    EXPECT_LT(ramp.get_value(), 1.0);
    ramp.advance(100000);
    ramp.advance(100000);
    EXPECT_EQ(ramp.get_value(), 1.0);
    for (const auto& [time, target] : {std::pair{0.0f, 3.0f}, {std::nanf(""), 5.0f}})
    {
        ramp.set_ramp_time(time);
        ramp.set_target(target);
        EXPECT_EQ(ramp.get_value(), target) << time;
    }
}

// Exact at powers of two, close to the true functions in between, rising
// everywhere; 2^x is finite and positive for any argument.
TEST(FastMath, ExactWhereItMustBeAndCloseInBetween)
{
    for (int e = -20; e <= 20; ++e)
    {
        EXPECT_EQ(fast_log2(std::ldexp(1.0f, e)), static_cast<float>(e));
        EXPECT_EQ(fast_exp2(static_cast<float>(e)), std::ldexp(1.0f, e));
    }
    EXPECT_NEAR(fast_log2(1.5f), 0.5833333f, 1e-6f);
    for (float x = 0.001f; x < 1000.0f; x *= 1.001f)
    {
        ASSERT_NEAR(fast_log2(x), std::log2(x), 0.01f) << x;
        ASSERT_GE(fast_log2(x * 1.001f), fast_log2(x)) << x;
    }
    for (float x = -20.0f; x < 20.0f; x += 0.001f)
    {
        ASSERT_NEAR(fast_exp2(x) / std::exp2(x), 1.0f, 0.0035f) << x;
        ASSERT_GE(fast_exp2(x + 0.001f), fast_exp2(x)) << x;
    }
    for (float x : {-1e30f, -200.0f, 200.0f, 1e30f, INFINITY, -INFINITY, std::nanf("")})
    {
        EXPECT_TRUE(std::isfinite(fast_exp2(x)) && fast_exp2(x) > 0.0f) << x;
    }
}

// ---- The whole engine, long and hard ----------------------------------------

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

// Sample t of the signal: silence, noise, a 110 Hz full-scale square, full-scale DC.
float signal_at(Signal signal, long t, float rate, zq_test::Noise& noise)
{
    const float square = (t / static_cast<long>(rate / 220.0f)) % 2 == 0 ? 1.0f : -1.0f;
    const float values[] = {0.0f, signal == Signal::noise ? noise.next() : 0.0f, square, 1.0f};
    return values[static_cast<int>(signal)];
}

class BeretSoak : public testing::TestWithParam<std::tuple<Signal, float>>
{
};

// Every corner of "Nuclear Power" x "Vin Rouge" x tempo, ordered so that each
// setting changes while the engine runs: the output stays finite, normal and
// bounded, and so do the engine's states.
TEST_P(BeretSoak, StaysFiniteNormalAndBounded)
{
    const auto [signal, rate] = GetParam();
    Engine e(rate);
    zq_test::Noise noise;
    long t = 0;
    float peak = 0.0f;
    static const float kVin[] = {0.0f, 1.0f / 16.0f, 1.0f / 3.0f, 1.0f};
    for (int c = 0; c < 16; ++c)
    {
        e.ctrl.set_nuke((c & 1) != 0);
        e.ctrl.set_vin_rouge(kVin[(c >> 1) & 3]);
        e.ctrl.set_tempo((c & 8) != 0 ? 240.0f : 60.0f);
        for (long b = 0; b < static_cast<long>(kSecondsPerCorner * rate / Engine::kBlock); ++b)
        {
            for (float& x : e.buf.in)
            {
                x = signal_at(signal, t++, rate, noise);
            }
            ASSERT_TRUE(e.render(Engine::kBlock)) << "corner " << c << ", block " << b;
            ASSERT_TRUE(e.ctrl.use_loop().use_beret().state_is_normal()) << "corner " << c << ", block " << b;
            peak = std::max(peak, zq_test::peak(e.buf.out));
        }
    }
    EXPECT_LE(peak, kOutputBound);
    RecordProperty("peak", std::to_string(peak));
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
    Engine e(44100.0f, 0.0f);
    zq_test::Noise noise;
    for (int b = 0; b < 44100 * 2 / Engine::kBlock; ++b)
    {
        for (float& x : e.buf.in)
        {
            x = noise.next();
        }
        e.render(Engine::kBlock);
    }
    std::fill(e.buf.in.begin(), e.buf.in.end(), 0.0f);
    for (int b = 0; b < 44100 * 60 / Engine::kBlock; ++b)
    {
        ASSERT_TRUE(e.render(Engine::kBlock)) << "block " << b;
        ASSERT_TRUE(e.ctrl.use_loop().use_beret().state_is_normal()) << "block " << b;
    }
    EXPECT_LT(zq_test::peak(e.buf.out), 1e-20f);
}

}  // namespace
