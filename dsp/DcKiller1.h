#pragma once

#include "dsp/FloatGuard.h"

namespace dsp
{

// First-order high-pass at 5 Hz that takes the DC off the loop's signal: the
// bilinear transform of H(s) = s / (s + 1), s normalised to the cutoff.
class DcKiller1
{
public:
    DcKiller1();

    // Ignored unless the rate is usable.
    void set_sample_freq(float f);
    void reset();
    // Keeps the decaying tail of a constant input out of the denormal range
    // when the caller does not run with flush-to-zero: once per block is enough.
    void flush_state()
    {
        _x1 = flush_tiny(_x1);
        _y1 = flush_tiny(_y1);
    }

    float filter(float x)
    {
        const float y = _c0 * x + _c1 * _x1 - _a1 * _y1;
        _x1 = x;
        _y1 = y;
        return y;
    }

    float get_sample_freq() const { return _sample_freq; }

private:
    void update_coefs();

    float _sample_freq = 44100.0f;
    float _c0 = 0.0f;
    float _c1 = 0.0f;
    float _a1 = 0.0f;
    float _x1 = 0.0f;
    float _y1 = 0.0f;
};

}  // namespace dsp
