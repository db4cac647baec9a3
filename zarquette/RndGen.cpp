#include "zarquette/RndGen.h"

#include <cmath>

namespace zarquette
{

void RndGen::advance()
{
    _state = static_cast<std::int32_t>((static_cast<std::int64_t>(_state) * 16807) % 2147483647);
}

int RndGen::gen_int(int n)
{
    advance();
    return _state % n;
}

float RndGen::gen_float()
{
    advance();
    return static_cast<float>(_state) * (1.0f / 2147483648.0f);
}

float RndGen::gen_shaped(float centre, float amount)
{
    const float r = gen_float();
    if (amount <= 0.0f)
    {
        return r;
    }
    // A cubic that is flat at m, maps 0 to 0 and 1 to 1: its outputs crowd around
    // m^3 / ((1-m)^3 + m^3). m follows centre along a tangent-shaped curve.
    const float d = centre - 0.5f;
    const float t = std::tan(3.11f * d);
    const float m = ((2.0f * centre - 1.0f - t) * (d * d * 3.773f) + t) * 0.10718114f + 0.5f;
    const float y0 = -(m * m * m);
    const float y1 = 1.0f - m;
    const float rm = r - m;
    const float g = (rm * rm * rm - y0) / (y1 * y1 * y1 - y0);
    return r + amount * (g - r);
}

}  // namespace zarquette
