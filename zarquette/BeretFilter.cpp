#include "zarquette/BeretFilter.h"

#include "dsp/FloatGuard.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace zarquette
{
namespace
{

constexpr double kPi = 3.14159265358979323846;
constexpr float kMinStep = 1.0f / 1024.0f;
// Values for stages 1 to 4 into the lanes, which hold the stages as 4, 1, 2, 3.
void set_lanes(float (&lanes)[4], double s1, double s2, double s3, double s4)
{
    lanes[0] = static_cast<float>(s4);
    lanes[1] = static_cast<float>(s1);
    lanes[2] = static_cast<float>(s2);
    lanes[3] = static_cast<float>(s3);
}

}  // namespace

BeretFilter::BeretFilter()
{
    reset();
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
    std::fill(std::begin(_stages), std::end(_stages), 0.0f);
    std::fill(std::begin(_soft), std::end(_soft), 0.0f);
    std::fill(std::begin(_in_prev), std::end(_in_prev), 0.0f);
    _last = kLoopOffset;
}

BeretFilter::State BeretFilter::get_state() const
{
    return {_in_prev[1] / _b, _stages[1], _stages[2], _stages[3], _stages[0]};
}

bool BeretFilter::state_is_normal() const
{
    for (int i = 0; i < 4; ++i)
    {
        for (float s : {_stages[i], _in_prev[i]})
        {
            if (!std::isfinite(s) || dsp::is_denormal(s))
            {
                return false;
            }
        }
    }
    return std::isfinite(_last);
}

void BeretFilter::update_coefs()
{
    // Kept below a quarter of the running rate (the host's rate), where the
    // one-poles stay well inside their stable range.
    const double w = dsp::clamp_finite(static_cast<double>(_cutoff) / _sample_freq, 1.0 / _sample_freq, 0.25);
    const double c = 1.0 / std::tan(kPi * w);
    const double b = 1.0 / (1.0 + c);
    const double a = (1.0 - c) * b;
    const double q = _resonance;
    const double k = q * 11.0 / (((w * 8.0 + 5.0) * w + 6.0) * w + 2.0);
    const double dw = w - 0.25;
    _out_gain = static_cast<float>((dw * dw * 24.0 + 0.5) * q + (1.0 - q));
    constexpr double kNever = std::numeric_limits<float>::infinity();
    set_lanes(_fold_level, kNever, kNever, (1.25f - _drive) - 0.125f * _resonance, kNever);

    // The previous input is kept as its share of each stage: rescaled to the
    // new b, so that a cutoff change applies to it as the formulas say.
    const double u_prev = _in_prev[1] / _b;
    _b = static_cast<float>(b);
    const double b2 = b * b;
    const double b3 = b2 * b;
    const double b4 = b2 * b2;
    set_lanes(_b_pow, b, b2, b3, b4);
    set_lanes(_in_prev, b * u_prev, b2 * u_prev, b3 * u_prev, b4 * u_prev);
    // Old state j reaches stage j at -a and every later stage k at
    // b^(k-j) (1 - a); halved, as the soft limits are kept doubled. Weights of
    // n stages back, for stages 1 to 4 (zero where there is no such stage).
    const double h = 0.5 * (1.0 - a);
    const double na = -0.5 * a;
    set_lanes(_weight[0], na, na, na, na);
    set_lanes(_weight[1], 0.0, h * b, h * b, h * b);
    set_lanes(_weight[2], 0.0, 0.0, h * b2, h * b2);
    set_lanes(_weight[3], 0.0, 0.0, 0.0, h * b3);

    const double gain = k * _keep;
    set_lanes(_b_pow_gain, b * gain, b2 * gain, b3 * gain, b4 * gain);
    set_lanes(_b_pow_snap, b * _snap, b2 * _snap, b3 * _snap, b4 * _snap);
    _last_gain = static_cast<float>(b4 * gain);
    // The loop's arithmetic at rest (c = 0.125), which the loop subtracts
    // again, so that rest is exact: silence then stays silent instead of
    // settling on a residue.
    const float head = _last_gain * kLoopOffset;
    _rest_spread = (head * (kLoopOffset * kLoopOffset) - head * kLoopOffset) - head;
    _last_snap = static_cast<float>(b4 * _snap);
    _k_inv_step = static_cast<float>(k * _inv_step);
    _k_inv_step_offset = static_cast<float>(k * _inv_step * kRestValue);
}

}  // namespace zarquette
