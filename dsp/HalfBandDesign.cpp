#include "dsp/HalfBandDesign.h"

#include "dsp/FloatGuard.h"

#include <cmath>

namespace dsp
{
namespace
{

constexpr double kPi = 3.14159265358979323846;
constexpr double kTermFloor = 1e-100;

// x^n for n >= 0 by repeated squaring.
double int_pow(double x, int n)
{
    double result = 1.0;
    while (n > 0)
    {
        if ((n & 1) != 0)
        {
            result *= x;
        }
        x *= x;
        n >>= 1;
    }
    return result;
}

// The nome q of the elliptic modulus k, from its series in e.
double compute_nome(double k)
{
    const double r = std::pow(1.0 - k * k, 0.25);
    const double e = 0.5 * (1.0 - r) / (1.0 + r);
    const double e4 = e * e * e * e;
    return (((150.0 * e4 + 15.0) * e4 + 2.0) * e4 + 1.0) * e;
}

int compute_order(double attenuation_db, double q)
{
    const double p = std::pow(10.0, -0.1 * attenuation_db);
    const double alpha = p / (1.0 - p);
    int order = static_cast<int>(std::ceil(std::log(alpha * alpha / 16.0) / std::log(q)));
    if (order % 2 == 0)
    {
        ++order;
    }
    return order <= 1 ? 3 : order;
}

// The numerator and denominator theta-function series, each stopped after the
// first term too small to matter.
double series_num(double q, int c, int order)
{
    double sum = 0.0;
    for (int i = 0;; ++i)
    {
        const double sign = (i % 2 == 0) ? 1.0 : -1.0;
        const double term = sign * int_pow(q, i * (i + 1)) * std::sin((2 * i + 1) * c * kPi / order);
        sum += term;
        if (std::fabs(term) <= kTermFloor)
        {
            return sum * std::pow(q, 0.25);
        }
    }
}

double series_den(double q, int c, int order)
{
    double sum = 0.5;
    for (int i = 1;; ++i)
    {
        const double sign = (i % 2 == 0) ? 1.0 : -1.0;
        const double term = sign * int_pow(q, i * i) * std::cos(2 * i * c * kPi / order);
        sum += term;
        if (std::fabs(term) <= kTermFloor)
        {
            return sum;
        }
    }
}

}  // namespace

void design_half_band(std::vector<double>& coefs, double attenuation_db, double transition)
{
    // Outside these ranges the design has no meaning or needs hundreds of stages.
    attenuation_db = clamp_finite(attenuation_db, 1.0, 200.0);
    transition = clamp_finite(transition, 1e-4, 0.45);

    const double t = std::tan((1.0 - 2.0 * transition) * kPi / 4.0);
    const double k = t * t;
    const double q = compute_nome(k);
    const int order = compute_order(attenuation_db, q);

    coefs.resize(static_cast<std::size_t>((order - 1) / 2));
    for (std::size_t i = 0; i < coefs.size(); ++i)
    {
        const int c = static_cast<int>(i) + 1;
        const double w = series_num(q, c, order) / series_den(q, c, order);
        const double w2 = w * w;
        const double x = std::sqrt((1.0 - w2 * k) * (1.0 - w2 / k)) / (1.0 + w2);
        coefs[i] = (1.0 - x) / (1.0 + x);
    }
}

}  // namespace dsp
