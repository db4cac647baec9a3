#pragma once

#include <algorithm>
#include <cmath>

namespace dsp
{

// Clamps x into [lo, hi]; NaN counts as 0 (clamped too, for a range without
// 0). The neutral 0, not the low end: for a symmetric signal range the low end
// is full negative level.
template <typename T>
inline T clamp_finite(T x, T lo, T hi)
{
    return std::min(std::max(lo, std::isnan(x) ? T(0) : x), hi);
}

// Sends anything below about -400 dB to exactly zero. Recursive states decaying
// in silence would otherwise crawl through the denormal range, which is slow on
// x86 and never audible. A comparison, not the add-and-subtract trick: rounding
// to a grid would leave a slowly decaying one-pole stuck at a small fixed point.
inline float flush_tiny(float x)
{
    return std::fabs(x) < 1e-20f ? 0.0f : x;
}

inline double flush_tiny(double x)
{
    return std::fabs(x) < 1e-200 ? 0.0 : x;
}

inline bool is_denormal(float x)
{
    return std::fpclassify(x) == FP_SUBNORMAL;
}

// Sample rates the signal classes accept; anything else (zero, negative, NaN, a
// host's garbage) is ignored by their rate setters.
inline bool is_usable_sample_freq(float f)
{
    return f >= 1000.0f && f <= 1.0e6f;
}

}  // namespace dsp
