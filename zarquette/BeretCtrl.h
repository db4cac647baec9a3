#pragma once

#include "zarquette/BeretLoop.h"
#include "zarquette/LinearRamp.h"
#include "zarquette/Pattern.h"
#include "zarquette/RndGen.h"

namespace zarquette
{

// The loop engine's sequencer: steps through a pattern of 16 or 32 steps, four
// to the beat, applies each active step to the loop, sweeps the filter cutoff
// along it, and renews the pattern after every second pass and whenever
// "Nuclear Power" changes.
class BeretCtrl
{
public:
    static constexpr int kStepsPerBeat = 4;
    // Tempos outside this range (a host's odd report) are clamped into it.
    static constexpr float kMinTempo = 20.0f;
    static constexpr float kMaxTempo = 1000.0f;

    BeretCtrl();
    virtual ~BeretCtrl() = default;

    // out and in hold at least as many samples as any render asks for; scratch
    // as many again.
    void set_buffers(float* out, const float* in, float* scratch);
    // Ignored unless the rate is usable. The position is not rescaled: the
    // processor resets after a rate change.
    void set_sample_freq(float f);
    // Keeps the phase in beats. NaN is ignored.
    void set_tempo(float bpm);
    // Any call regenerates the pattern at the next render, keeping the position.
    void set_nuke(bool on);
    void set_vin_rouge(float v);
    // Back to the start: the next render begins a new pattern at step 0.
    void reset();
    // Reads n samples from the start of the input buffer, writes n to the output.
    void render(int n);
    // Refills the pattern from the engine's generator (uses its current length).
    void generate_pattern();

    BeretLoop& use_loop() { return _loop; }
    const BeretLoop& use_loop() const { return _loop; }
    const Pattern& use_pattern() const { return _pattern; }
    const RndGen& use_rnd() const { return _rnd; }
    int get_pos() const { return _pos; }
    int get_cur_step() const { return _cur_step; }
    double get_beat_len() const { return _beat_len; }
    float get_cutoff_log2() const { return static_cast<float>(_cutoff_ramp.get_value()); }

private:
    int get_step_start(int step) const;
    void advance_step();
    void apply_step(int s);
    void update_beat_len();

    BeretLoop _loop;
    float _sample_freq = 44100.0f;
    float _tempo = 120.0f;
    double _beat_len = 10000.0;
    double _inv_beat_len = 0.00001;
    int _pos = 0;
    int _cur_step = -1;
    Pattern _pattern;
    int _pass_count = 0;
    bool _regen_at_wrap = true;
    bool _regen_now = false;
    float _nuke = 0.0f;
    LinearRamp _cutoff_ramp;
    RndGen _rnd;
};

}  // namespace zarquette
