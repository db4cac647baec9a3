// The loop filter against a plain model written from its formulas, one
// oversampled sample at a time. The filter regroups its arithmetic for speed,
// and its nonlinear path (fold, quantiser, saturation, guards) is chaotic at
// strong resonance, so the model starts every sample from the filter's own
// state and both must then agree to within float rounding.
#include "zarquette/BeretFilter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

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

// The filter of the loop written out as plainly as possible.
class FilterModel
{
public:
    explicit FilterModel(const Setting& s) : _q(s.resonance), _drive(s.drive)
    {
        const double w = s.cutoff / static_cast<double>(kRate);
        const double c = 1.0 / std::tan(kPi * w);
        _b = static_cast<float>(1.0 / (1.0 + c));
        _a = static_cast<float>((1.0 - c) / (1.0 + c));
        _k = static_cast<float>(s.resonance * 11.0 / (((w * 8.0 + 5.0) * w + 6.0) * w + 2.0));
        _out_gain = static_cast<float>(((w - 0.25) * (w - 0.25) * 24.0 + 0.5) * s.resonance + (1.0 - s.resonance));
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
        const float s4n = _b * (s3n + g(s3)) - _a * g(st.s4);
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

struct Comparison
{
    int mismatches = 0;
    float largest_state = 0.0f;
};

// A saw with a little noise, loud enough to drive the nonlinearities.
Comparison compare(const Setting& s, int samples)
{
    BeretFilter filter;
    filter.set_sample_freq(kRate);
    filter.set_cutoff(s.cutoff);
    filter.set_resonance(s.resonance);
    filter.set_drive(s.drive);
    const FilterModel model(s);
    Comparison result;
    std::uint32_t noise = 7u;
    for (int i = 0; i < samples; ++i)
    {
        noise = noise * 1664525u + 1013904223u;
        const float white = static_cast<float>(noise >> 8) * (1.0f / 16777216.0f) - 0.5f;
        const float in = s.level * (static_cast<float>(i % 401) / 200.0f - 1.0f + 0.1f * white);
        BeretFilter::State want = filter.get_state();
        const float want_out = model.step(want, in);
        const float got_out = filter.process(in);
        const BeretFilter::State got = filter.get_state();
        const bool same = near(got_out, want_out) && near(got.u_prev, want.u_prev) && near(got.s1, want.s1)
                       && near(got.s2, want.s2) && near(got.s3, want.s3) && near(got.s4, want.s4);
        if (!same && result.mismatches++ == 0)
        {
            ADD_FAILURE() << "first mismatch at sample " << i << ": output " << got_out << " vs " << want_out
                          << ", s4 " << got.s4 << " vs " << want.s4;
        }
        for (float x : {got.s1, got.s2, got.s3, got.s4})
        {
            result.largest_state = std::max(result.largest_state, std::fabs(x));
        }
    }
    return result;
}

TEST(BeretFilterModel, FollowsTheFormulasAcrossSettings)
{
    const Setting settings[] = {
        {1000.0f, 0.0f, 0.0f, 0.5f},    // plain four-pole low-pass
        {4000.0f, 0.5f, 0.0f, 0.8f},    // resonance, no quantiser
        {2500.0f, 0.7f, 0.25f, 1.0f},   // quantised feedback, coarse grid
        {8000.0f, 0.4f, 0.6f, 1.5f},    // fold of the third stage
        {300.0f, 0.9f, 1.0f, 1.0f},     // full drive
        {19000.0f, 1.0f, 0.05f, 1.25f}, // near the top of the range
    };
    for (const Setting& s : settings)
    {
        SCOPED_TRACE(testing::Message() << "cutoff " << s.cutoff << " q " << s.resonance << " drive " << s.drive);
        EXPECT_EQ(compare(s, 40000).mismatches, 0);
    }
}

TEST(BeretFilterModel, SelfOscillationPastFourIsLeftAlone)
{
    // Full resonance at the top of the cutoff range with a hot loop drives the
    // states beyond 4; they are still the formulas' states, not runaways, and
    // must not be limited.
    const Setting s{44000.0f, 1.0f, 0.0f, 2.0f};
    const Comparison c = compare(s, 40000);
    EXPECT_GT(c.largest_state, 4.0f);
    EXPECT_EQ(c.mismatches, 0);
}

}  // namespace
