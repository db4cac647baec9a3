#pragma once

#include <cstdint>
#include <vector>

// The benchmarks' input: white noise in [-0.5, 0.5) on the left and its
// negation on the right, the same every run.
inline void fill_stereo_noise(std::vector<float>& left, std::vector<float>& right)
{
    std::uint32_t noise = 1u;
    for (std::size_t i = 0; i < left.size() && i < right.size(); ++i)
    {
        noise = noise * 1664525u + 1013904223u;
        left[i] = static_cast<float>(noise >> 8) * (1.0f / 16777216.0f) - 0.5f;
        right[i] = -left[i];
    }
}
