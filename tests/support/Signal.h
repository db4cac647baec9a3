#pragma once

// Signals for the audio tests: a deterministic noise, and the checks every
// render needs (peak, finite and normal samples, the largest difference).

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <vector>

namespace zq_test
{

// White noise in [-1, 1), the same sequence on every run and platform.
class Noise
{
public:
    explicit Noise(std::uint32_t seed = 12345u) : _state(seed) {}

    float next()
    {
        _state = _state * 1664525u + 1013904223u;
        return static_cast<float>(_state >> 8) * (2.0f / 16777216.0f) - 1.0f;
    }

    std::vector<float> take(std::size_t n, float gain = 1.0f)
    {
        std::vector<float> v(n);
        for (float& x : v)
        {
            x = gain * next();
        }
        return v;
    }

private:
    std::uint32_t _state;
};

// Finite and not denormal: what a host may be handed.
inline bool is_clean(float x)
{
    return std::isfinite(x) && std::fpclassify(x) != FP_SUBNORMAL;
}

inline bool all_clean(const std::vector<float>& v)
{
    return std::all_of(v.begin(), v.end(), is_clean);
}

inline float peak(const std::vector<float>& v)
{
    return std::accumulate(v.begin(), v.end(), 0.0f, [](float p, float x) { return std::max(p, std::fabs(x)); });
}

// Over the samples both hold.
inline float max_difference(const std::vector<float>& a, const std::vector<float>& b)
{
    const auto n = static_cast<std::ptrdiff_t>(std::min(a.size(), b.size()));
    return std::inner_product(
        a.begin(), a.begin() + n, b.begin(), 0.0f, [](float d, float e) { return std::max(d, e); },
        [](float x, float y) { return std::fabs(x - y); });
}

}  // namespace zq_test
