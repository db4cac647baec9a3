#include "dsp/LimiterRms1p.h"

#include <limits>

namespace dsp
{
namespace
{

constexpr double kPi = 3.14159265358979323846;
// The detector's cutoff stays at or below an eighth of the rate, where the
// bilinear one-pole is well behaved.
constexpr double kMaxDetectorArg = kPi / 8.0;

}  // namespace

LimiterRms1p::LimiterRms1p()
{
    update_coefs();
}

void LimiterRms1p::set_sample_freq(float f)
{
    if (!is_usable_sample_freq(f))
    {
        return;
    }
    _sample_freq = f;
    update_coefs();
}

void LimiterRms1p::set_time(float seconds)
{
    _time = clamp_finite(seconds, 1e-4f, 100.0f);
    update_coefs();
}

void LimiterRms1p::set_levels(float gain, float threshold)
{
    constexpr float kMax = std::numeric_limits<float>::max();
    _gain = clamp_finite(gain, 0.0f, kMax);
    _threshold = clamp_finite(threshold, 0.0f, kMax);
}

void LimiterRms1p::reset()
{
    _s_prev = 0.0;
    _ms = 0.0;
}

void LimiterRms1p::update_coefs()
{
    const double arg = std::min(kPi / (static_cast<double>(_sample_freq) * _time), kMaxDetectorArg);
    const double c = 1.0 / std::tan(arg);
    _b = 1.0 / (1.0 + c);
    _a = (1.0 - c) * _b;
}

}  // namespace dsp
