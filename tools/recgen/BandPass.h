#pragma once

#include "Pi.h"

#include <cmath>

namespace recgen
{

// Band-pass with 0 dB at its centre, for noise bands (frication, hisses).
class BandPass
{
public:
    void set(double freq, double bandwidth, double rate)
    {
        const double w = 2.0 * pi * freq / rate;
        const double alpha = std::sin(w) * bandwidth / (2.0 * freq);
        const double a0 = 1.0 + alpha;
        _b0 = alpha / a0;
        _a1 = -2.0 * std::cos(w) / a0;
        _a2 = (1.0 - alpha) / a0;
    }

    float process(float x)
    {
        const double y = _b0 * (x - _x2) - _a1 * _y1 - _a2 * _y2;
        _x2 = _x1;
        _x1 = x;
        _y2 = _y1;
        _y1 = y;
        return static_cast<float>(y);
    }

private:
    double _b0 = 0.0, _a1 = 0.0, _a2 = 0.0;
    double _x1 = 0.0, _x2 = 0.0, _y1 = 0.0, _y2 = 0.0;
};

}  // namespace recgen
