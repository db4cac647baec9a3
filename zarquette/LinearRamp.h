#pragma once

namespace zarquette
{

// A value that glides linearly to its target over a set time, advanced in
// whole blocks of samples.
class LinearRamp
{
public:
    // Ignored unless the rate is usable; a glide in progress keeps its duration
    // in seconds.
    void set_sample_freq(float f);
    // Seconds a glide takes; negative or NaN means 0 (jumps).
    void set_ramp_time(float seconds);
    // Jumps: start, current value and target all become v.
    void set_value(float v);
    // Starts a glide from the current value to v.
    void set_target(float v);
    void advance(int n);

    double get_value() const { return _current; }
    float get_target() const { return _target; }

private:
    float _ramp_time = 0.1f;
    float _sample_freq = 44100.0f;
    float _start = 0.0f;
    float _target = 0.0f;
    double _current = 0.0;
    double _step = 0.0;
};

}  // namespace zarquette
