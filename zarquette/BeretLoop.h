#pragma once

#include "zarquette/Beret.h"

namespace zarquette
{

// The loop's gate clock: within each step it repeats a cycle of period_beats,
// opening the gate for the first delay_beats of each cycle. The delay line reads
// delay_beats back, so a closed gate repeats exactly the stretch that was let in.
class BeretLoop
{
public:
    BeretLoop();
    virtual ~BeretLoop() = default;

    // Ignored unless the rate is usable.
    void set_sample_freq(float f);
    // Keeps the position in the cycle in beats. Ignored unless positive and finite.
    void set_tempo(float bpm);
    // Lengths in beats, each clamped to [1/1024, 64] (NaN counts as the lower end).
    void set_lengths(float delay_beats, float period_beats);
    // Starts a new cycle with the gate open.
    void restart_gate();
    void set_cutoff(float hz) { _beret.set_cutoff(hz); }
    void set_resonance(float q) { _beret.set_resonance(q); }
    void set_drive(float v) { _beret.set_drive(v); }
    void set_vin_rouge(float v) { _beret.set_vin_rouge(v); }
    void reset();
    void render(int offset, int n);

    Beret& use_beret() { return _beret; }
    const Beret& use_beret() const { return _beret; }
    int get_counter() const { return _counter; }
    int get_delay_len() const { return _delay_len; }
    int get_period_len() const { return _period_len; }

private:
    void update_lengths();
    void update_gate();

    Beret _beret;
    float _sample_freq = 44100.0f;
    float _tempo = 120.0f;
    double _beat_len = 22050.0;
    double _inv_beat_len = 1.0 / 22050.0;
    int _counter = 0;
    double _delay_beats = 0.5;
    int _delay_len = 11025;
    double _period_beats = 2.0;
    int _period_len = 44100;
    bool _gate = true;
};

}  // namespace zarquette
