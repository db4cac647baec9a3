#pragma once

#include "Pi.h"

#include <cmath>

namespace recgen
{

// One-pole low-pass: the spectral tilt of a source, dark to bright.
class OnePole
{
public:
    void set(double cutoff, double rate) { _k = 1.0 - std::exp(-2.0 * pi * cutoff / rate); }
    float process(float x)
    {
        _y += _k * (x - _y);
        return static_cast<float>(_y);
    }

private:
    double _k = 1.0;
    double _y = 0.0;
};

}  // namespace recgen
