#include "zarquette/BeretFilter.h"

#include <algorithm>

namespace zarquette
{
namespace
{

constexpr double kPi = 3.14159265358979323846;
constexpr float kMinStep = 1.0f / 1024.0f;

}  // namespace

BeretFilter::BeretFilter()
{
    update_coefs();
    set_drive(0.0f);
}

void BeretFilter::set_sample_freq(float f)
{
    if (!dsp::is_usable_sample_freq(f))
    {
        return;
    }
    _sample_freq = f;
    update_coefs();
}

void BeretFilter::set_cutoff(float hz)
{
    // The cutoff arrives with every rendered piece, mostly unchanged.
    if (hz == _cutoff)
    {
        return;
    }
    _cutoff = hz;
    update_coefs();
}

void BeretFilter::set_resonance(float q)
{
    _resonance = dsp::clamp_finite(q, 0.0f, 1.0f);
    update_coefs();
}

void BeretFilter::set_drive(float v)
{
    _drive = dsp::clamp_finite(v, 0.0f, 1.0f);
    const float step = std::max(_drive, kMinStep);
    _inv_step = 1.0f / step;
    const float rest = 1.0f - _drive;
    const float mix = (1.0f - rest * rest * rest) * 1.5f;
    _keep = 1.0f - mix;
    _snap = mix * step;
    update_coefs();
}

void BeretFilter::reset()
{
    _u_prev = 0.0f;
    _s1 = 0.0f;
    _s2 = 0.0f;
    _s3 = 0.0f;
    _s4 = 0.0f;
    _last_stage = 0.0f;
}

bool BeretFilter::state_is_normal() const
{
    for (float s : {_u_prev, _s1, _s2, _s3, _s4})
    {
        if (!std::isfinite(s) || dsp::is_denormal(s))
        {
            return false;
        }
    }
    return true;
}

void BeretFilter::update_coefs()
{
    // Kept below a quarter of the running rate (the host's rate), where the
    // one-poles stay well inside their stable range.
    const double w = dsp::clamp_finite(static_cast<double>(_cutoff) / _sample_freq, 1.0 / _sample_freq, 0.25);
    const double c = 1.0 / std::tan(kPi * w);
    const double b = 1.0 / (1.0 + c);
    _b = static_cast<float>(b);
    _a = static_cast<float>((1.0 - c) * b);
    const double q = _resonance;
    _k = static_cast<float>(q * 11.0 / (((w * 8.0 + 5.0) * w + 6.0) * w + 2.0));
    const double dw = w - 0.25;
    _out_gain = static_cast<float>((dw * dw * 24.0 + 0.5) * q + (1.0 - q));
    _fold_level = (1.25f - _drive) - 0.125f * _resonance;
    _k_inv_step = _k * _inv_step;
}

}  // namespace zarquette
