#pragma once

// What the editor's tests look for in its pictures, on- and off-screen.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace zq_test
{

// The editor's picture as 0xRRGGBB, rows of 512 from the top.
using Screen = std::vector<std::uint32_t>;

// Knob 1 ("Bof"): its centre.
constexpr int kBofX = 294;
constexpr int kBofY = 226;

// The pixels that differ inside the box knob 1 draws in and outside it.
inline std::pair<int, int> changes_around_bof(const Screen& a, const Screen& b)
{
    std::pair<int, int> changes{0, 0};
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
    {
        const std::size_t x = i % 512;
        const std::size_t y = i / 512;
        if (a[i] != b[i])
        {
            ++(x >= 250 && x < 340 && y >= 180 && y < 275 ? changes.first : changes.second);
        }
    }
    return changes;
}

// The dark pixels of the 8 x 8 square from (x0, y0). A bound control's learn
// marker is a black square there in the top-right corner of its hit box
// (for knob 1, from (kBofX + 32, kBofY - 40)).
inline int dark_pixels(const Screen& screen, int x0, int y0)
{
    int dark = 0;
    for (int y = y0; y < y0 + 8; ++y)
    {
        for (int x = x0; x < x0 + 8; ++x)
        {
            const std::uint32_t p = screen[static_cast<std::size_t>(y * 512 + x)];
            dark += (p & 0xFF) + ((p >> 8) & 0xFF) + (p >> 16) < 96 ? 1 : 0;
        }
    }
    return dark;
}

}  // namespace zq_test
