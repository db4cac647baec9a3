#include "zarquette/LinearRamp.h"

#include "dsp/FloatGuard.h"

#include <limits>

namespace zarquette
{

void LinearRamp::set_sample_freq(float f)
{
    if (!dsp::is_usable_sample_freq(f))
    {
        return;
    }
    _step = _step * _sample_freq / f;
    _sample_freq = f;
}

void LinearRamp::set_ramp_time(float seconds)
{
    _ramp_time = dsp::clamp_finite(seconds, 0.0f, std::numeric_limits<float>::max());
}

void LinearRamp::set_value(float v)
{
    _start = v;
    _target = v;
    _current = v;
    _step = 0.0;
}

void LinearRamp::set_target(float v)
{
    if (_ramp_time == 0.0f)
    {
        set_value(v);
        return;
    }
    _start = static_cast<float>(_current);
    _target = v;
    _step = (v - _current) / (static_cast<double>(_sample_freq) * _ramp_time);
}

void LinearRamp::advance(int n)
{
    if (_step == 0.0)
    {
        return;
    }
    _current += n * _step;
    if ((_current - _target) * _step >= 0.0)
    {
        set_value(_target);
    }
}

}  // namespace zarquette
