#include "zarquette/FastMath.h"

#include "dsp/FloatGuard.h"

#include <cmath>
#include <cstdint>
#include <cstring>

namespace zarquette
{
namespace
{

constexpr std::uint32_t kExponentMask = 0x7F800000u;
constexpr int kMantissaBits = 23;
constexpr std::uint32_t kExponentOne = 127u << kMantissaBits;

std::uint32_t get_bits(float x)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &x, sizeof bits);
    return bits;
}

float from_bits(std::uint32_t bits)
{
    float x = 0.0f;
    std::memcpy(&x, &bits, sizeof x);
    return x;
}

}  // namespace

float fast_log2(float x)
{
    const std::uint32_t bits = get_bits(x);
    const int e = static_cast<int>((bits & kExponentMask) >> kMantissaBits) - 128;
    // Sign and mantissa of x with the exponent of 1: a value in [1, 2).
    const float mm = from_bits((bits & ~kExponentMask) | kExponentOne);
    // e + ((2 - mm/3) mm - 2/3), rearranged so that mm = 1 adds exactly nothing.
    return static_cast<float>(e + 1) + (mm - 1.0f) * (5.0f - mm) * (1.0f / 3.0f);
}

float fast_exp2(float x)
{
    x = dsp::clamp_finite(x, -126.0f, 127.0f);
    const float i = std::floor(x);
    const float f = x - i;
    const float p = (f * (1.0f / 3.0f) + 2.0f / 3.0f) * f + 1.0f;
    const std::int32_t shift = static_cast<std::int32_t>(i) * (1 << kMantissaBits);
    return from_bits(static_cast<std::uint32_t>(static_cast<std::int32_t>(get_bits(p)) + shift));
}

}  // namespace zarquette
