#pragma once

// What the filter tests measure: a filter's settled response to a sine, taken
// from the RMS of the second half of a run so that the start has died away and
// it does not matter where the output samples fall on the wave.

#include <cmath>

namespace dsp_test
{

constexpr double kPi = 3.14159265358979323846;

// Sample i of a unit sine of the given cycles per sample.
inline float sine(double cycles_per_sample, long i)
{
    return static_cast<float>(std::sin(2.0 * kPi * cycles_per_sample * static_cast<double>(i)));
}

// The RMS of step(i) over the second half of i = 0 .. n - 1.
template <typename Step>
double settled_rms(int n, Step&& step)
{
    double sum = 0.0;
    for (int i = 0; i < n; ++i)
    {
        const double y = step(i);
        sum += i >= n / 2 ? y * y : 0.0;
    }
    return std::sqrt(sum / (n - n / 2));
}

}  // namespace dsp_test
