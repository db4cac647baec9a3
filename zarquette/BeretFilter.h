#pragma once

#include "dsp/FloatGuard.h"

#include <cmath>

namespace zarquette
{

// The loop's four-stage low-pass, run at four times the sample rate: a cascade
// of bilinear one-poles, each fed the soft-limited state of the stage before,
// with saturated and bit-crushed resonance feedback from the last stage and a
// fold of the third stage's state. The nonlinearities are what give the loop its
// growl; running oversampled keeps their aliasing down.
class BeretFilter
{
public:
    BeretFilter();

    // The rate the filter runs at (four times the host's). Ignored unless usable.
    void set_sample_freq(float f);
    // Clamped to [1 Hz, a quarter of the running rate].
    void set_cutoff(float hz);
    // Clamped to [0, 1]; NaN counts as 0.
    void set_resonance(float q);
    // Clamped to [0, 1]; NaN counts as 0.
    void set_drive(float v);
    void reset();
    bool state_is_normal() const;

    // What one sample leaves for the next: the previous input and the four
    // stage states.
    struct State
    {
        float u_prev;
        float s1;
        float s2;
        float s3;
        float s4;
    };
    State get_state() const { return {_u_prev, _s1, _s2, _s3, _s4}; }

    // True when the drive mixes in the quantised feedback; without it the
    // feedback skips the quantiser, which leaves its value exactly as it is.
    bool is_quantising() const { return _snap != 0.0f; }

    // One sample at the running rate; Quantise must equal is_quantising().
    // Within a sample the stages feed each other unguarded (their inputs are
    // bounded); what is kept for the next sample is limited and flushed.
    template <bool Quantise>
    float process(float in)
    {
        // The input is no state: a tiny value here is gone the sample after, so
        // it is not flushed.
        const float u = in - feedback<Quantise>();
        const float s3 = std::fabs(_s3) > _fold_level ? -_s3 : _s3;
        const float g1 = soft_limit(_s1);
        const float g2 = soft_limit(_s2);
        const float g3 = soft_limit(s3);
        const float g4 = soft_limit(_s4);
        const float r1 = _b * u + (_b * _u_prev - _a * g1);
        const float r2 = _b * r1 + (_b * g1 - _a * g2);
        const float r3 = _b * r2 + (_b * g2 - _a * g3);
        const float r4 = _b * r3 + (_b * g3 - _a * g4);
        _s1 = guard_state(r1);
        _s2 = guard_state(r2);
        _s3 = guard_state(r3);
        _s4 = guard_state(r4);
        _last_stage = r4;
        _u_prev = u;
        return _s4 * _out_gain;
    }

    float process(float in) { return is_quantising() ? process<true>(in) : process<false>(in); }

private:
    // Where the recursion can start to diverge: beyond 3 + 2 sqrt(2) the soft
    // limit below folds a state back harder than the state grows (|g(x)| > |x|),
    // so from there a loop could run away. Every state below it, however loud a
    // resonance rings, is left exactly as the formulas make it. Tiny states are
    // flushed so that a decay never reaches the denormal range.
    static constexpr float kStateLimit = 5.82842712f;
    // Adding and removing 1.5 x 2^23 rounds a float to the nearest whole number,
    // halves to even, as long as it is below 2^22 in magnitude.
    static constexpr float kRoundMagic = 12582912.0f;

    // Saturated feedback from the last stage, zero at rest, then pulled towards a
    // grid of the drive's step size. Products are regrouped so that the chain from
    // one sample's last stage to the next sample's input stays short. It reads the
    // last stage before its guard: the guard's limit lies outside the feedback's
    // own clamp, and what its flush removes vanishes next to the offset of 0.125,
    // so the result is the same and the guard is off the chain.
    template <bool Quantise>
    float feedback() const
    {
        const float c = dsp::clamp_finite(_last_stage + 0.125f, -1.0f, 1.0f);
        const float sat = c * (1.0f + std::fabs(c) - c * c) - 0.138671875f;
        const float f = sat * _k;
        if (!Quantise)
        {
            return f;
        }
        const float snapped = (sat * _k_inv_step + kRoundMagic) - kRoundMagic;
        return f * _keep + snapped * _snap;
    }

    static float soft_limit(float x)
    {
        const float e = x - dsp::clamp_finite(x, -1.0f, 1.0f);
        return x - 0.5f * e * std::fabs(e);
    }

    static float guard_state(float x) { return dsp::flush_tiny(dsp::clamp_finite(x, -kStateLimit, kStateLimit)); }

    void update_coefs();

    float _sample_freq = 176400.0f;
    float _cutoff = 4000.0f;
    float _resonance = 0.4f;
    float _drive = 0.0f;
    float _u_prev = 0.0f;
    float _s1 = 0.0f;
    float _s2 = 0.0f;
    float _s3 = 0.0f;
    float _s4 = 0.0f;
    // The last stage's value before the guard, which the feedback reads.
    float _last_stage = 0.0f;
    float _a = 0.0f;
    float _b = 0.0f;
    float _k = 0.0f;
    float _out_gain = 1.0f;
    float _fold_level = 1.25f;
    // The quantiser pulls f towards round(f / step) x step by `mix`, computed as
    // f x keep + round(f / step) x snap with keep = 1 - mix and snap = mix x step.
    float _inv_step = 1024.0f;
    float _k_inv_step = 0.0f;
    float _keep = 1.0f;
    float _snap = 0.0f;
};

}  // namespace zarquette
