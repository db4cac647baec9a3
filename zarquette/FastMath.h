#pragma once

namespace zarquette
{

// Cheap base-2 logarithm of a positive float: the exponent plus a quadratic in
// the mantissa. Exact at powers of two, within about 0.01 in between. Zero,
// negative and non-finite arguments give a finite but meaningless result.
float fast_log2(float x);

// Cheap 2^x: a quadratic in the fractional part, scaled by writing the integer
// part into the exponent field. Exact at whole numbers, within about 0.2% in
// between. x is clamped to [-126, 127] (NaN counts as -126).
float fast_exp2(float x);

}  // namespace zarquette
