#pragma once

#include <cmath>
#include <cstdint>
#include <vector>

namespace beret_test
{

// Work buffers the way the processor lends them to the loop engine, big enough
// for a whole test run in one call when a test wants that.
struct Buffers
{
    explicit Buffers(std::size_t n) : in(n, 0.0f), out(n, 0.0f), scratch(n, 0.0f) {}

    std::vector<float> in;
    std::vector<float> out;
    std::vector<float> scratch;
};

// A small deterministic white-noise source in [-1, 1).
class Noise
{
public:
    float next()
    {
        _state = _state * 1664525u + 1013904223u;
        return static_cast<float>(_state >> 8) * (2.0f / 16777216.0f) - 1.0f;
    }

private:
    std::uint32_t _state = 12345u;
};

inline bool is_clean(float x)
{
    return std::isfinite(x) && std::fpclassify(x) != FP_SUBNORMAL;
}

}  // namespace beret_test
