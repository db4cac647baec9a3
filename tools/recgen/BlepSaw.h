#pragma once

#include <cmath>

namespace recgen
{

// period may change at every cycle, which is how jitter and vibrato enter.
class BlepSaw
{
public:
    // Advances by dt cycles; wrapped tells whether a new cycle began.
    float tick(double dt, bool& wrapped)
    {
        _phase += dt;
        wrapped = _phase >= 1.0;
        if (wrapped)
        {
            _phase -= std::floor(_phase);
        }
        return static_cast<float>(2.0 * _phase - 1.0 - blep(_phase, dt));
    }

private:
    static double blep(double t, double dt)
    {
        if (t < dt)
        {
            t /= dt;
            return t + t - t * t - 1.0;
        }
        if (t > 1.0 - dt)
        {
            t = (t - 1.0) / dt;
            return t * t + t + t + 1.0;
        }
        return 0.0;
    }

    double _phase = 0.0;
};

}  // namespace recgen
