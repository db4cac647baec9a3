#include "dsp/DcKiller1.h"

#include <cmath>

namespace dsp
{
namespace
{

constexpr double kPi = 3.14159265358979323846;
constexpr double kCutoffHz = 5.0;

// Analog prototype s / (s + 1): numerator (0, 1), denominator (1, 1).
constexpr double kNum0 = 0.0;
constexpr double kNum1 = 1.0;
constexpr double kDen0 = 1.0;
constexpr double kDen1 = 1.0;

}  // namespace

DcKiller1::DcKiller1()
{
    update_coefs();
}

void DcKiller1::set_sample_freq(float f)
{
    if (!is_usable_sample_freq(f))
    {
        return;
    }
    _sample_freq = f;
    update_coefs();
}

void DcKiller1::reset()
{
    _x1 = 0.0f;
    _y1 = 0.0f;
}

void DcKiller1::update_coefs()
{
    const double k = 1.0 / std::tan(kPi * kCutoffHz / _sample_freq);
    const double norm = 1.0 / (kDen0 + kDen1 * k);
    _c0 = static_cast<float>((kNum0 + kNum1 * k) * norm);
    _c1 = static_cast<float>((kNum0 - kNum1 * k) * norm);
    _a1 = static_cast<float>((kDen0 - kDen1 * k) * norm);
}

}  // namespace dsp
