#pragma once

#include <cstdint>

namespace recgen
{

// SplitMix64: a small, fast generator with good statistics. Every recording
// draws from its own instance seeded from its name, so each image depends only
// on its name and the generator's code, never on the order of generation.
class Rng
{
public:
    explicit Rng(std::uint64_t seed) : _state(seed) {}

    static Rng from_name(const char* name)
    {
        std::uint64_t h = 14695981039346656037ull;  // FNV-1a
        for (; *name != '\0'; ++name)
        {
            h = (h ^ static_cast<unsigned char>(*name)) * 1099511628211ull;
        }
        return Rng(h);
    }

    std::uint64_t next()
    {
        std::uint64_t z = (_state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }

    // Uniform in [0, 1).
    double uniform() { return static_cast<double>(next() >> 11) * 0x1.0p-53; }
    double range(double lo, double hi) { return lo + (hi - lo) * uniform(); }
    // Integer in [0, n).
    int pick(int n) { return static_cast<int>(uniform() * n); }
    bool chance(double p) { return uniform() < p; }
    // A bell-shaped draw with mean 0 and unit variance (sum of four uniforms).
    double bell() { return (uniform() + uniform() + uniform() + uniform() - 2.0) * 1.7320508; }

private:
    std::uint64_t _state;
};

}  // namespace recgen
