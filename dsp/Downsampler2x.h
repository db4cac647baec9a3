#pragma once

#include "dsp/Downsampler2xInterface.h"
#include "dsp/HalfBandPaths.h"

#include <vector>

namespace dsp
{

// The polyphase decimator: path A filters the second sample of each pair, path B
// the first, and their mean is the output. Final, so that an owner holding the
// concrete type gets its per-sample calls inlined.
template <int N>
class Downsampler2x final : public Downsampler2xInterface
{
public:
    void load_coefs(const std::vector<double>& coefs) override { _paths.load_coefs(coefs); }
    void copy_coefs(const float* coefs) override { _paths.copy_coefs(coefs); }

    float downsample_pair(float in0, float in1) override
    {
        const __m128 ab = _paths.run(in1, in0);
        return (HalfBandPaths<N>::lane_a(ab) + HalfBandPaths<N>::lane_b(ab)) * 0.5f;
    }

    // With the states in registers throughout.
    void downsample_block(float* out, const float* in, int count) override
    {
        _paths.run_block(
            count,
            [&](int i) {
                const __m128 pair = _mm_loadl_pi(_mm_setzero_ps(), reinterpret_cast<const __m64*>(in + 2 * i));
                return _mm_shuffle_ps(pair, pair, _MM_SHUFFLE(0, 0, 0, 1));
            },
            [&](int i, __m128 ab) { out[i] = (HalfBandPaths<N>::lane_a(ab) + HalfBandPaths<N>::lane_b(ab)) * 0.5f; });
    }

    void clear_state() override { _paths.clear_state(); }
    // Tiny states to zero, once per block (per-sample calls do not flush).
    void flush_state() { _paths.flush_state(); }
    bool state_is_normal() const override { return _paths.state_is_normal(); }
    float get_coef(int i) const { return _paths.get_coef(i); }

private:
    HalfBandPaths<N> _paths;
};

}  // namespace dsp
