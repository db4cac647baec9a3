#include "zarquette/Beret.h"

#include "dsp/HalfBandDesign.h"
#include "zarquette/FastMath.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace zarquette
{
namespace
{

// The longest loop (a lowest loop frequency of 0.125 Hz), plus the four taps of
// the interpolator.
constexpr double kLongestDelaySeconds = 8.0;
constexpr int kDelayTaps = 4;

int delay_capacity(float sample_freq)
{
    return static_cast<int>(std::ceil(kLongestDelaySeconds * sample_freq)) + kDelayTaps;
}
constexpr double kStopBandDb = 69.0;
constexpr double kSteepTransition = 0.01;
constexpr double kGentleTransition = 0.2;
constexpr float kLimiterTime = 0.03f;
constexpr float kLimiterGain = 0.75f;
constexpr float kLimiterThreshold = kLimiterGain * kLimiterGain;
// The clipper of the driven input is asymmetric on purpose.
constexpr float kClipLow = -1.25f;
constexpr float kClipHigh = 1.0f;
// What enters the resamplers and the filter is kept within +120 dB of full
// scale, where no host's audio goes but well below where an all-pass state
// could overflow into infinity and then NaN for good. It also turns a direct
// caller's NaN or infinity into something the loop survives.
constexpr float kLoopInputLimit = 1.0e6f;

template <typename Resampler>
void load_design(Resampler& resampler, double transition)
{
    std::vector<double> coefs;
    dsp::design_half_band(coefs, kStopBandDb, transition);
    resampler.load_coefs(coefs);
}

}  // namespace

// The delay line gets its size from the first set_sample_freq below.
Beret::Beret() : _delay(kDelayTaps)
{
    load_design(_up_steep, kSteepTransition);
    load_design(_down_steep, kSteepTransition);
    load_design(_up_gentle, kGentleTransition);
    load_design(_down_gentle, kGentleTransition);
    _limiter.set_time(kLimiterTime);
    _limiter.set_levels(kLimiterGain, kLimiterThreshold);
    set_sample_freq(_sample_freq);
    set_delay(0.375);
    update_feedback_gain();
}

void Beret::set_buffers(float* out, const float* in, float* scratch)
{
    _out = out;
    _in = in;
    _scratch = scratch;
}

void Beret::set_sample_freq(float f)
{
    if (!dsp::is_usable_sample_freq(f))
    {
        return;
    }
    _delay.set_capacity(delay_capacity(f));
    _sample_freq = f;
    _filter.set_sample_freq(4.0f * f);
    _dc_killer.set_sample_freq(f);
    _limiter.set_sample_freq(f);
}

void Beret::set_delay(double seconds)
{
    _delay.set_delay(_sample_freq * seconds);
}

void Beret::set_hold_gain(float g)
{
    _hold_gain = dsp::clamp_finite(g, 0.0f, 1.0f);
    update_feedback_gain();
}

void Beret::set_gate(bool open)
{
    _gate = open;
    update_feedback_gain();
}

void Beret::set_cutoff(float hz)
{
    _filter.set_cutoff(hz);
}

void Beret::set_resonance(float q)
{
    _filter.set_resonance(q);
}

void Beret::set_drive(float v)
{
    _filter.set_drive(v);
}

void Beret::set_vin_rouge(float v)
{
    _vin_rouge = dsp::clamp_finite(v, 0.0f, 1.0f);
    // Linear near zero so that 0 is silent, then exponential up to 2^8 at 1.
    _drive_gain = _vin_rouge < 0.0625f ? 1.6875f * _vin_rouge : fast_exp2(12.0f * _vin_rouge - 4.0f);
    update_feedback_gain();
}

void Beret::update_feedback_gain()
{
    _delay.set_gain(_gate ? _vin_rouge : _hold_gain);
}

void Beret::reset()
{
    _filter.reset();
    _dc_killer.reset();
    _limiter.reset();
}

bool Beret::state_is_normal() const
{
    return _filter.state_is_normal() && _up_steep.state_is_normal() && _up_gentle.state_is_normal() &&
           _down_gentle.state_is_normal() && _down_steep.state_is_normal();
}

// While the gate is closed the live input is driven by "Vin Rouge" and clipped;
// the result goes to the scratch buffer, which render then reads instead.
const float* Beret::drive_input(int offset, int n)
{
    if (_gate)
    {
        return _in;
    }
    for (int i = offset; i < offset + n; ++i)
    {
        _scratch[i] = dsp::clamp_finite(_in[i] * _drive_gain, kClipLow, kClipHigh);
    }
    return _scratch;
}

template <bool Quantise>
void Beret::render_chunk(const float* src, int at, int n)
{
    for (int i = 0; i < n; ++i)
    {
        _chunk[i] = dsp::clamp_finite(src[at + i] + _delay.read(i), -kLoopInputLimit, kLoopInputLimit);
    }
    _up_steep.upsample_block(_chunk, _twice, n);
    _up_gentle.upsample_block(_twice, _four_times, 2 * n);
    _filter.process_block<Quantise>(_four_times, 4 * n);
    _down_gentle.downsample_block(_twice, _four_times, 2 * n);
    _down_steep.downsample_block(_chunk, _twice, n);
    for (int i = 0; i < n; ++i)
    {
        const float result = _limiter.limit(_dc_killer.filter(_chunk[i]));
        _delay.write(result);
        _out[at + i] = result;
    }
}

void Beret::render(int offset, int n)
{
    const float* src = drive_input(offset, n);
    // The drive is constant over a piece: the choice is made once, not per sample.
    const bool quantise = _filter.is_quantising();
    for (int done = 0; done < n;)
    {
        const int k = std::min({n - done, kChunk, _delay.get_lookahead()});
        if (quantise)
        {
            render_chunk<true>(src, offset + done, k);
        }
        else
        {
            render_chunk<false>(src, offset + done, k);
        }
        done += k;
    }
    flush_states();
}

// The host's entry sets flush-to-zero for the audio thread; for callers that do
// not go through it, the linear recursions are flushed once per piece rather
// than per sample. A decay can only pass through the denormal range for the
// rest of one piece.
void Beret::flush_states()
{
    _up_steep.flush_state();
    _up_gentle.flush_state();
    _down_gentle.flush_state();
    _down_steep.flush_state();
    _dc_killer.flush_state();
}

}  // namespace zarquette
