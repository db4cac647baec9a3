#pragma once

#include "Pi.h"

#include <cmath>

namespace recgen
{

// at low frequencies.
class Resonator
{
public:
    void set(double freq, double bandwidth, double rate)
    {
        const double r = std::exp(-pi * bandwidth / rate);
        _c = -r * r;
        _b = 2.0 * r * std::cos(2.0 * pi * freq / rate);
        _a = 1.0 - _b - _c;
    }

    float process(float x)
    {
        const double y = _a * x + _b * _y1 + _c * _y2;
        _y2 = _y1;
        _y1 = y;
        return static_cast<float>(y);
    }

private:
    double _a = 1.0, _b = 0.0, _c = 0.0;
    double _y1 = 0.0, _y2 = 0.0;
};

}  // namespace recgen
