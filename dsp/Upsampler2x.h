#pragma once

#include "dsp/HalfBandPaths.h"

#include <array>
#include <vector>

namespace dsp
{

// Doubles the sample rate with a polyphase IIR half-band filter: both paths see
// the input, path A gives the first output sample and path B the second. Each
// path has unity gain at DC, so no gain factor is needed.
template <int N>
class Upsampler2x
{
public:
    void load_coefs(const std::vector<double>& coefs) { _paths.load_coefs(coefs); }

    std::array<float, 2> upsample(float x)
    {
        const __m128 ab = _paths.run(x, x);
        return {HalfBandPaths<N>::lane_a(ab), HalfBandPaths<N>::lane_b(ab)};
    }

    // out[2i] and out[2i + 1] from in[i] for i in [0, n): the same as upsample
    // on each, with the states in registers throughout.
    void upsample_block(const float* in, float* out, int n)
    {
        _paths.run_block(
            n, [&](int i) { return _mm_set1_ps(in[i]); },
            [&](int i, __m128 ab) { _mm_storel_pi(reinterpret_cast<__m64*>(out + 2 * i), ab); });
    }

    void clear_state() { _paths.clear_state(); }
    // Tiny states to zero, once per block (per-sample calls do not flush).
    void flush_state() { _paths.flush_state(); }
    bool state_is_normal() const { return _paths.state_is_normal(); }
    float get_coef(int i) const { return _paths.get_coef(i); }

private:
    HalfBandPaths<N> _paths;
};

}  // namespace dsp
