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

    void clear_state() { _paths.clear_state(); }
    // Tiny states to zero, once per block (per-sample calls do not flush).
    void flush_state() { _paths.flush_state(); }
    bool state_is_normal() const { return _paths.state_is_normal(); }
    float get_coef(int i) const { return _paths.get_coef(i); }

private:
    HalfBandPaths<N> _paths;
};

}  // namespace dsp
