// The loop filter: its guard against runaway states, then the filter against
// a plain model written from its formulas. The filter regroups its arithmetic
// for speed, and its nonlinear path (fold, quantiser, saturation, guards) is
// chaotic at strong resonance: started from the same state, one sample of both
// agrees to within float rounding; run on their own, they agree for a while
// and then part, and from there on they must still sound the same, while a
// filter built wrong must not.
#include "zarquette/BeretFilter.h"

#include "tests/support/Signal.h"
#include "tools/soundcheck/SoundComparison.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

namespace
{

using zarquette::BeretFilter;

constexpr double kPi = 3.14159265358979323846;
constexpr float kRate = 176400.0f;  // four times 44100

struct Setting
{
    float cutoff;
    float resonance;
    float drive;
    float level;  // input peak
};

BeretFilter make_filter(const Setting& s)
{
    BeretFilter f;
    f.set_sample_freq(kRate);
    f.set_cutoff(s.cutoff);
    f.set_resonance(s.resonance);
    f.set_drive(s.drive);
    return f;
}

TEST(BeretFilter, HugeInputCannotMakeTheStatesRunAway)
{
    // Left unguarded, the soft limit's fold turns a loud input at a high cutoff
    // into an exploding state.
    for (float q : {0.0f, 1.0f})
    {
        BeretFilter f = make_filter({19484.0f, q, 1.0f, 16.0f});
        for (int i = 0; i < 100000; ++i)
        {
            const float y = f.process((i / 400) % 2 != 0 ? 16.0f : -16.0f);
            ASSERT_TRUE(std::isfinite(y)) << i;
            ASSERT_LE(std::fabs(y), 8.0f) << i;
        }
        EXPECT_TRUE(f.state_is_normal());
    }
}

// ---- Against the formulas ---------------------------------------------------

// Ways to build the filter wrong, for the model to show that the comparison of
// sound hears them.
enum class Fault
{
    none,
    resonance_up,   // the resonance 10 % high
    stage_dropped,  // three stages instead of four
    octave_down,    // the cutoff an octave low
};

// The filter of the loop written out as plainly as possible.
class FilterModel
{
public:
    explicit FilterModel(const Setting& s, Fault fault = Fault::none)
        : _q(fault == Fault::resonance_up ? 1.1f * s.resonance : s.resonance), _drive(s.drive), _fault(fault)
    {
        const double w = s.cutoff / static_cast<double>(kRate) * (fault == Fault::octave_down ? 0.5 : 1.0);
        const double c = 1.0 / std::tan(kPi * w);
        _b = static_cast<float>(1.0 / (1.0 + c));
        _a = static_cast<float>((1.0 - c) / (1.0 + c));
        _k = static_cast<float>(_q * 11.0 / (((w * 8.0 + 5.0) * w + 6.0) * w + 2.0));
        _out_gain = static_cast<float>(((w - 0.25) * (w - 0.25) * 24.0 + 0.5) * _q + (1.0 - _q));
        _step = std::max(s.drive, 1.0f / 1024.0f);
        _mix = (1.0f - (1.0f - s.drive) * (1.0f - s.drive) * (1.0f - s.drive)) * 1.5f;
    }

    // One sample from the given state; returns the output, leaves the new state.
    float step(BeretFilter::State& st, float in) const
    {
        const float c = std::clamp(st.s4 + 0.125f, -1.0f, 1.0f);
        const float sat = c * (1.0f + std::fabs(c) - c * c) - 0.138671875f;
        float f = sat * _k;
        f = f + _mix * (std::nearbyint(f / _step) * _step - f);
        const float u = in - f;
        const float s3 = std::fabs(st.s3) > (1.25f - _drive) - 0.125f * _q ? -st.s3 : st.s3;
        const float s1n = _b * (u + st.u_prev) - _a * g(st.s1);
        const float s2n = _b * (s1n + g(st.s1)) - _a * g(st.s2);
        const float s3n = _b * (s2n + g(st.s2)) - _a * g(s3);
        const float s4n = _fault == Fault::stage_dropped ? s3n : _b * (s3n + g(s3)) - _a * g(st.s4);
        st = {u, s1n, s2n, s3n, s4n};
        return s4n * _out_gain;
    }

private:
    static float g(float x)
    {
        const float e = x - std::clamp(x, -1.0f, 1.0f);
        return x - 0.5f * e * std::fabs(e);
    }

    float _q;
    float _drive;
    Fault _fault;
    float _a;
    float _b;
    float _k;
    float _out_gain;
    float _step;
    float _mix;
};

// Float rounding of a handful of operations on values of this size.
bool near(float got, float want)
{
    return std::fabs(got - want) <= 2e-6f * std::max(1.0f, std::fabs(want));
}

// A saw with a little noise, loud enough to drive the nonlinearities.
struct Saw
{
    float next() { return level * (static_cast<float>(t++ % 401) / 200.0f - 1.0f + 0.05f * noise.next()); }

    float level;
    zq_test::Noise noise{7u};
    int t = 0;
};

// Every sample of the filter against one step of the model from the filter's
// own state before it: the mismatches, and the largest state on the way.
std::pair<int, float> compare(const Setting& s, int samples)
{
    BeretFilter filter = make_filter(s);
    const FilterModel model(s);
    int mismatches = 0;
    float largest_state = 0.0f;
    Saw saw{s.level};
    for (int i = 0; i < samples; ++i)
    {
        const float in = saw.next();
        BeretFilter::State want = filter.get_state();
        const float want_out = model.step(want, in);
        const float got_out = filter.process(in);
        const BeretFilter::State got = filter.get_state();
        const bool same = near(got_out, want_out) && near(got.u_prev, want.u_prev) && near(got.s1, want.s1)
                       && near(got.s2, want.s2) && near(got.s3, want.s3) && near(got.s4, want.s4);
        if (!same && mismatches++ == 0)
        {
            ADD_FAILURE() << "first mismatch at sample " << i << ": output " << got_out << " vs " << want_out
                          << ", s4 " << got.s4 << " vs " << want.s4;
        }
        largest_state = std::max({largest_state, std::fabs(got.s1), std::fabs(got.s2), std::fabs(got.s3),
                                  std::fabs(got.s4)});
    }
    return {mismatches, largest_state};
}

// The last row, full resonance at the top of the cutoff range with a hot loop,
// drives the states beyond 4: they are still the formulas' states, not
// runaways, and must not be limited.
TEST(BeretFilterModel, FollowsTheFormulasAcrossSettings)
{
    for (const auto& [s, least_peak_state] : {
             std::pair{Setting{1000.0f, 0.0f, 0.0f, 0.5f}, 0.0f},  // plain four-pole low-pass
             {{4000.0f, 0.5f, 0.0f, 0.8f}, 0.0f},                  // resonance, no quantiser
             {{2500.0f, 0.7f, 0.25f, 1.0f}, 0.0f},                 // quantised feedback, coarse grid
             {{8000.0f, 0.4f, 0.6f, 1.5f}, 0.0f},                  // fold of the third stage
             {{300.0f, 0.9f, 1.0f, 1.0f}, 0.0f},                   // full drive
             {{19000.0f, 1.0f, 0.05f, 1.25f}, 0.0f},               // near the top of the range
             {{44000.0f, 1.0f, 0.0f, 2.0f}, 4.0f},                 // self-oscillation past 4
         })
    {
        SCOPED_TRACE(testing::Message() << "cutoff " << s.cutoff << " q " << s.resonance << " drive " << s.drive);
        const auto [mismatches, peak_state] = compare(s, 40000);
        EXPECT_EQ(mismatches, 0);
        EXPECT_GE(peak_state, least_peak_state);
    }
}

// A self-oscillating, quantising setting: run on their own from a reset, the
// two agree to float rounding at first and stay close for a thousand samples
// before the chaos parts them.
const Setting kSelfOscillating = {2000.0f, 0.9f, 0.5f, 1.0f};

TEST(BeretFilterModel, OnTheirOwnTheyAgreeAtFirstAndStayCloseForAThousandSamples)
{
    BeretFilter filter = make_filter(kSelfOscillating);
    const FilterModel model(kSelfOscillating);
    BeretFilter::State state{0.0f, 0.0f, 0.0f, 0.0f, 0.0f};
    Saw saw{kSelfOscillating.level};
    for (int i = 0; i < 1000; ++i)
    {
        const float in = saw.next();
        const float want = model.step(state, in);
        const float got = filter.process(in);
        ASSERT_TRUE(i >= 16 || near(got, want)) << "sample " << i << ": " << got << " vs " << want;
        ASSERT_NEAR(got, want, 1e-4f) << "sample " << i;
    }
}

using soundcheck::SoundComparison;
using soundcheck::SoundProfile;

// Ten seconds of a stutter (the saw on the first half of every 16th note at
// 120 BPM) through the self-oscillating setting, at four times 44.1 kHz and
// averaged down by fours for the comparison.
SoundProfile sound_of(const std::function<float(float)>& process)
{
    constexpr int kFrames = 10 * 44100;
    constexpr int kSixteenth = 44100 / 8;
    std::vector<float> out(kFrames);
    Saw saw{kSelfOscillating.level};
    for (int i = 0; i < kFrames; ++i)
    {
        const bool on = i % kSixteenth < kSixteenth / 2;
        for (int k = 0; k < 4; ++k)
        {
            const float x = saw.next();
            out[static_cast<std::size_t>(i)] += 0.25f * process(on ? x : 0.0f);
        }
    }
    return SoundProfile::analyse({out.data()}, out.size(), 44100.0, 120.0);
}

TEST(BeretFilterModel, SoundsLikeTheFormulasAndUnlikeAFilterBuiltWrong)
{
    BeretFilter filter = make_filter(kSelfOscillating);
    const SoundProfile sound = sound_of([&](float x) { return filter.process(x); });
    for (Fault fault : {Fault::none, Fault::resonance_up, Fault::stage_dropped, Fault::octave_down})
    {
        const FilterModel model(kSelfOscillating, fault);
        BeretFilter::State state{0.0f, 0.0f, 0.0f, 0.0f, 0.0f};
        const SoundProfile model_sound = sound_of([&](float x) { return model.step(state, x); });
        EXPECT_EQ(SoundComparison(sound, model_sound).is_same(), fault == Fault::none)
            << "fault " << static_cast<int>(fault);
    }
}

}  // namespace
