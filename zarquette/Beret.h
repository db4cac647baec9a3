#pragma once

#include "dsp/DcKiller1.h"
#include "dsp/Downsampler2x.h"
#include "dsp/LimiterRms1p.h"
#include "dsp/Upsampler2x.h"
#include "zarquette/BeretDelay.h"
#include "zarquette/BeretFilter.h"

namespace zarquette
{

// The loop's signal path: input plus the delay line's fractional feedback read,
// four times oversampled through the nonlinear low-pass, DC killer and RMS
// limiter, then written back into the delay line, so that what loops is the
// filtered sound. While the gate is open the input enters the loop and the
// echoes come back at the "Vin Rouge" level; while it is closed the loop repeats
// at the hold gain and the live input is only heard driven and clipped.
class Beret
{
public:
    Beret();
    virtual ~Beret() = default;

    // The processor's work buffers; render reads `in` and writes `out`, and
    // stores the driven input in `scratch` while the gate is closed.
    void set_buffers(float* out, const float* in, float* scratch);
    // Ignored unless the rate is usable. Sizes the delay line for the rate,
    // which allocates: call it from the host's thread, never while rendering.
    void set_sample_freq(float f);
    void set_delay(double seconds);
    void set_hold_gain(float g);
    void set_gate(bool open);
    void set_cutoff(float hz);
    void set_resonance(float q);
    void set_drive(float v);
    // The "Vin Rouge" value, clamped to [0, 1]: echo feedback while the gate is
    // open, drive of the live input while it is closed.
    void set_vin_rouge(float v);
    // Clears the filter, DC killer and limiter; the delay line, the resamplers and
    // the gate keep their state.
    void reset();
    void render(int offset, int n);

    float get_sample_freq() const { return _sample_freq; }
    bool is_gate_open() const { return _gate; }
    float get_drive_gain() const { return _drive_gain; }
    const BeretDelay& use_delay() const { return _delay; }
    // False when any resampler or filter state is denormal or not finite.
    bool state_is_normal() const;

private:
    void update_feedback_gain();
    const float* drive_input(int offset, int n);
    template <bool Quantise>
    void render_chunk(const float* src, int at, int n);
    void flush_states();

    // A piece is rendered in chunks, each stage over the whole chunk before
    // the next, with its state in registers. A chunk is no longer than the
    // delay line can be read ahead of its writes, so that every sample is
    // computed exactly as one at a time would be.
    static constexpr int kChunk = 256;

    float* _out = nullptr;
    const float* _in = nullptr;
    float* _scratch = nullptr;
    BeretDelay _delay;
    BeretFilter _filter;
    dsp::Upsampler2x<8> _up_steep;
    dsp::Upsampler2x<3> _up_gentle;
    dsp::Downsampler2x<3> _down_gentle;
    dsp::Downsampler2x<8> _down_steep;
    dsp::DcKiller1 _dc_killer;
    dsp::LimiterRms1p _limiter;
    // The chunk at the host rate, then at twice and four times the rate.
    float _chunk[kChunk] = {};
    float _twice[2 * kChunk] = {};
    float _four_times[4 * kChunk] = {};
    float _sample_freq = 44100.0f;
    float _hold_gain = 0.75f;
    float _vin_rouge = 0.0f;
    float _drive_gain = 0.0f;
    bool _gate = false;
};

}  // namespace zarquette
