#pragma once

#include "dsp/FloatGuard.h"

#include <emmintrin.h>

#include <array>
#include <vector>

namespace dsp
{

// The two all-pass chains of a polyphase half-band filter, shared by both
// directions: stages of the even coefficients (0, 2, 4, ...) form path A, the odd
// ones path B, each run in rising coefficient order. The two paths do the same
// arithmetic on different data, so they run side by side in the lanes of one
// SSE2 register (lane 0 path A, lane 1 path B); each lane computes exactly what
// the scalar stage would.
template <int N>
class HalfBandPaths
{
    static_assert(N >= 1, "a half-band filter needs at least one stage");

public:
    // Takes the first N entries; missing ones become 0 (a one-sample delay), and
    // values outside [0, 1) are clamped so that every stage stays stable.
    void load_coefs(const std::vector<double>& coefs)
    {
        for (int i = 0; i < N; ++i)
        {
            const auto n = static_cast<std::size_t>(i);
            set_coef(i, n < coefs.size() ? static_cast<float>(coefs[n]) : 0.0f);
        }
    }

    void copy_coefs(const float* coefs)
    {
        for (int i = 0; i < N; ++i)
        {
            set_coef(i, coefs[i]);
        }
    }

    float get_coef(int i) const { return use_pair(i).coef[lane_of(i)]; }

    void clear_state()
    {
        for (Pair& p : _pairs)
        {
            for (int l = 0; l < kLanes; ++l)
            {
                p.x_prev[l] = 0.0f;
                p.y_prev[l] = 0.0f;
            }
        }
    }

    // Sends tiny states to zero; callers run it once per block (see flush_tiny).
    void flush_state()
    {
        for (Pair& p : _pairs)
        {
            for (int l = 0; l < kLanes; ++l)
            {
                p.x_prev[l] = flush_tiny(p.x_prev[l]);
                p.y_prev[l] = flush_tiny(p.y_prev[l]);
            }
        }
    }

    bool state_is_normal() const
    {
        for (int i = 0; i < N; ++i)
        {
            if (is_denormal(use_pair(i).y_prev[lane_of(i)]))
            {
                return false;
            }
        }
        return true;
    }

    // Path A fed `a` and path B fed `b`: returns A's result in lane 0 and B's in
    // lane 1.
    __m128 run(float a, float b)
    {
        __m128 result;
        run_block(
            1, [&](int) { return _mm_setr_ps(a, b, 0.0f, 0.0f); }, [&](int, __m128 v) { result = v; });
        return result;
    }

    // n samples in a row: feed(i) gives the inputs (path A in lane 0, path B in
    // lane 1), take(i, v) receives the results in the same lanes. The states stay
    // in registers for the whole block.
    template <typename Feed, typename Take>
    void run_block(int n, Feed feed, Take take)
    {
        __m128 coef[kPairs];
        __m128 x_prev[kPairs];
        __m128 y_prev[kPairs];
        for (int p = 0; p < kPairs; ++p)
        {
            const Pair& s = _pairs[static_cast<std::size_t>(p)];
            coef[p] = _mm_loadu_ps(s.coef);
            x_prev[p] = _mm_loadu_ps(s.x_prev);
            y_prev[p] = _mm_loadu_ps(s.y_prev);
        }
        for (int i = 0; i < n; ++i)
        {
            __m128 v = feed(i);
            for (int p = 0; p < kPairs; ++p)
            {
                // First-order all-pass: y = (x - y_prev) * coef + x_prev. Not
                // flushed here: the audio thread runs with flush-to-zero, and
                // other callers flush the states once per block.
                const __m128 y = _mm_add_ps(_mm_mul_ps(_mm_sub_ps(v, y_prev[p]), coef[p]), x_prev[p]);
                x_prev[p] = v;
                y_prev[p] = y;
                // With an odd count path B has no stage in the last pair: its
                // value passes unchanged.
                v = (N % 2 == 1 && p == kPairs - 1) ? keep_lane_b(y, v) : y;
            }
            take(i, v);
        }
        for (int p = 0; p < kPairs; ++p)
        {
            Pair& s = _pairs[static_cast<std::size_t>(p)];
            _mm_storeu_ps(s.x_prev, x_prev[p]);
            _mm_storeu_ps(s.y_prev, y_prev[p]);
        }
    }

    static float lane_a(__m128 v) { return _mm_cvtss_f32(v); }
    static float lane_b(__m128 v) { return _mm_cvtss_f32(_mm_shuffle_ps(v, v, _MM_SHUFFLE(1, 1, 1, 1))); }

private:
    static constexpr float kMaxCoef = 0.99999f;
    static constexpr int kPairs = (N + 1) / 2;
    static constexpr int kLanes = 4;

    // Stage 2j of path A in lane 0, stage 2j + 1 of path B in lane 1; the other
    // lanes idle at zero.
    struct Pair
    {
        float coef[kLanes] = {};
        float x_prev[kLanes] = {};
        float y_prev[kLanes] = {};
    };

    static int lane_of(int i) { return i % 2; }
    const Pair& use_pair(int i) const { return _pairs[static_cast<std::size_t>(i / 2)]; }

    void set_coef(int i, float c)
    {
        _pairs[static_cast<std::size_t>(i / 2)].coef[lane_of(i)] = clamp_finite(c, 0.0f, kMaxCoef);
    }

    // Lane 0 from a, the others from b.
    static __m128 keep_lane_b(__m128 a, __m128 b)
    {
        const __m128 lane0 = _mm_castsi128_ps(_mm_setr_epi32(-1, 0, 0, 0));
        return _mm_or_ps(_mm_and_ps(lane0, a), _mm_andnot_ps(lane0, b));
    }

    std::array<Pair, kPairs> _pairs{};
};

}  // namespace dsp
