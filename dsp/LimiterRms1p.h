#pragma once

#include "dsp/FloatGuard.h"

#include <cmath>

namespace dsp
{

// A limiter driven by a one-pole detector of the mean square: above the
// threshold T the signal is scaled so that its short-term RMS is G.
class LimiterRms1p
{
public:
    LimiterRms1p();

    // Ignored unless the rate is usable.
    void set_sample_freq(float f);
    // Detector time constant in seconds (its cutoff is 1 / time Hz).
    void set_time(float seconds);
    // Output gain G and mean-square threshold T; negative or NaN values become 0.
    void set_levels(float gain, float threshold);
    void reset();

    float limit(float x)
    {
        const double s = static_cast<double>(x) * x;
        _ms = flush_tiny(_b * (s + _s_prev) - _a * _ms);
        _s_prev = s;
        if (_ms <= _threshold)
        {
            return x;
        }
        return static_cast<float>(x * _gain / std::sqrt(_ms));
    }

    double get_mean_square() const { return _ms; }

private:
    void update_coefs();

    float _sample_freq = 44100.0f;
    float _time = 0.03f;
    double _b = 0.0;
    double _a = 0.0;
    double _s_prev = 0.0;
    double _ms = 0.0;
    float _gain = 1.0f;
    float _threshold = 1.0f;
};

}  // namespace dsp
