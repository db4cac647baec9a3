#pragma once

#include <emmintrin.h>

namespace zarquette
{

// The loop's four-stage low-pass, run at four times the sample rate: a cascade
// of bilinear one-poles, each fed the soft-limited state of the stage before,
// with saturated and bit-crushed resonance feedback from the last stage and a
// fold of the third stage's state. The nonlinearities are what give the loop its
// growl; running oversampled keeps their aliasing down.
//
// Every sample waits for the feedback of the one before, so the arithmetic is
// arranged around that wait. Written out, stage k (1 to 4) becomes
//   b^k (u + u_prev) + sum over j < k of b^(k-j) (1 - a) g_j - a g_k
// where u is the new input less the feedback and g_j the soft-limited old state
// of stage j. All but the b^k u term is known before the feedback is, and the
// four stages are one vector sum in the lanes of an SSE2 register. The feedback
// itself stays scalar and short: the clamped last stage, the saturator's cubic
// spread over products that run side by side, the quantiser's rounding, and the
// additions that make the next last stage.
class BeretFilter
{
public:
    BeretFilter();

    // The rate the filter runs at (four times the host's). Ignored unless usable.
    void set_sample_freq(float f);
    // Clamped to [1 Hz, a quarter of the running rate].
    void set_cutoff(float hz);
    // Clamped to [0, 1]; NaN counts as 0.
    void set_resonance(float q);
    // Clamped to [0, 1]; NaN counts as 0.
    void set_drive(float v);
    void reset();
    bool state_is_normal() const;

    // What one sample leaves for the next: the previous input and the four
    // stage states.
    struct State
    {
        float u_prev;
        float s1;
        float s2;
        float s3;
        float s4;
    };
    State get_state() const;

    // True when the drive mixes in the quantised feedback; without it the
    // feedback skips the quantiser, which leaves its value exactly as it is.
    bool is_quantising() const { return _snap != 0.0f; }

    // Filters n samples at the running rate in place; Quantise must equal
    // is_quantising().
    template <bool Quantise>
    void process_block(float* data, int n)
    {
        Kernel k(*this);
        for (int i = 0; i < n; ++i)
        {
            data[i] = k.step<Quantise>(data[i]);
        }
        k.save(*this);
    }

    // One sample, for callers outside the loop engine.
    float process(float in)
    {
        if (is_quantising())
        {
            process_block<true>(&in, 1);
        }
        else
        {
            process_block<false>(&in, 1);
        }
        return in;
    }

private:
    // The saturator's value at rest (c = 0.125), where the feedback is zero.
    static constexpr float kRestValue = 0.138671875f;
    // Adding and removing 1.5 x 2^23 rounds a float to the nearest whole number,
    // halves to even, as long as it is below 2^22 in magnitude.
    static constexpr float kRoundMagic = 12582912.0f;
    // Where the recursion can start to diverge: beyond 3 + 2 sqrt(2) the soft
    // limit folds a state back harder than the state grows (|g(x)| > |x|).
    // Every state below it, however loud a resonance rings, is left as the
    // formulas make it.
    static constexpr float kStateLimit = 5.82842712f;
    // The last stage is kept plus this, the saturator's input at rest.
    static constexpr float kLoopOffset = 0.125f;
    // Tiny states are flushed, so that a decay never reaches the denormal range.
    static constexpr float kTiny = 1e-20f;

    // The filter while it runs: coefficients and state in registers. The
    // object itself keeps plain floats, as a 32-bit Windows host's heap aligns
    // to 8 bytes only. The four stages sit in the lanes as 4, 1, 2, 3: the last
    // stage, which the loop reads and the output takes, in lane 0.
    struct Kernel
    {
        explicit Kernel(const BeretFilter& f)
            : stages(_mm_loadu_ps(f._stages)),
              in_prev(_mm_loadu_ps(f._in_prev)),
              last(_mm_set_ss(f._last)),
              b_pow(_mm_loadu_ps(f._b_pow)),
              weight{_mm_loadu_ps(f._weight[0]), _mm_loadu_ps(f._weight[1]), _mm_loadu_ps(f._weight[2]),
                     _mm_loadu_ps(f._weight[3])},
              b_pow_gain(_mm_loadu_ps(f._b_pow_gain)),
              b_pow_snap(_mm_loadu_ps(f._b_pow_snap)),
              fold_level(_mm_loadu_ps(f._fold_level)),
              rest_spread(_mm_set_ss(f._rest_spread)),
              last_gain(_mm_set_ss(f._last_gain)),
              last_snap(_mm_set_ss(f._last_snap)),
              k_inv_step(_mm_set_ss(f._k_inv_step)),
              k_inv_step_offset(_mm_set_ss(f._k_inv_step_offset)),
              out_gain(_mm_set_ss(f._out_gain))
        {
            soft = _mm_xor_ps(_mm_loadu_ps(f._soft), folds());
        }

        // Tiny states are flushed once per block, so that a decay never
        // crawls through the denormal range for longer. The stored soft
        // limits are unfolded: the fold level may change before the next block.
        void save(BeretFilter& f) const
        {
            _mm_storeu_ps(f._stages, flush(stages));
            _mm_storeu_ps(f._soft, flush(_mm_xor_ps(soft, folds())));
            _mm_storeu_ps(f._in_prev, flush(in_prev));
            f._last = _mm_cvtss_f32(last);
        }

        // The sign bit in the lanes of the states that fold.
        __m128 folds() const { return _mm_and_ps(_mm_cmpgt_ps(abs(stages), fold_level), sign_bits()); }

        template <bool Quantise>
        float step(float in)
        {
            // Off the loop: the new input's share of every stage and what the
            // old states add to it, state j reaching stage k through the
            // weights of k - j, gathered by turning the lanes.
            const __m128 fresh = _mm_mul_ps(b_pow, _mm_set1_ps(in));
            const __m128 weighted =
                _mm_add_ps(_mm_add_ps(_mm_mul_ps(weight[0], soft), _mm_mul_ps(weight[1], turn<1>(soft))),
                           _mm_add_ps(_mm_mul_ps(weight[2], turn<2>(soft)), _mm_mul_ps(weight[3], turn<3>(soft))));
            const __m128 known = _mm_add_ps(weighted, _mm_add_ps(in_prev, fresh));

            // The loop, in lane 0 (the other lanes are ignored): from the last
            // stage plus 0.125 that the sample before left, clamped, through the
            // saturator c (1 + |c| - c^2) and the quantiser, back to the last stage.
            const __m128 c = _mm_min_ss(_mm_max_ss(last, minus_one), one);
            const __m128 mag = abs(c);
            const __m128 square = _mm_mul_ss(c, c);
            const __m128 head = _mm_mul_ss(last_gain, c);
            // The feedback's share of the last stage, less what the same
            // operations give at rest: exactly zero there.
            __m128 spread =
                _mm_sub_ss(_mm_sub_ss(_mm_sub_ss(_mm_mul_ss(head, square), _mm_mul_ss(head, mag)), head), rest_spread);
            // The saturator once more, as a factor for the vector of stages: zero
            // at rest, exactly, so that silence stays silent.
            const __m128 cubic = _mm_mul_ss(c, _mm_sub_ss(_mm_add_ss(mag, one), square));
            const __m128 feedback = _mm_mul_ps(b_pow_gain, all(_mm_sub_ss(cubic, rest_value)));
            __m128 stages = _mm_sub_ps(known, feedback);
            __m128 in_part = _mm_sub_ps(fresh, feedback);
            if (Quantise)
            {
                // round(k sat / step), halves to even, its argument's cubic
                // spread over parallel products like the one above.
                const __m128 arg = _mm_mul_ss(k_inv_step, c);
                const __m128 cubic_arg = _mm_add_ss(_mm_sub_ss(arg, k_inv_step_offset), _mm_mul_ss(arg, _mm_sub_ss(mag, square)));
                const __m128 grid = _mm_sub_ss(_mm_add_ss(cubic_arg, round_magic), round_magic);
                spread = _mm_sub_ss(spread, _mm_mul_ss(last_snap, grid));
                const __m128 snapped = _mm_mul_ps(b_pow_snap, all(grid));
                stages = _mm_sub_ps(stages, snapped);
                in_part = _mm_sub_ps(in_part, snapped);
            }
            // r4 + 0.125 as the loop needs it: the stage's own part plus 0.125
            // first, so that near rest a remainder below the grain of 0.125 is
            // lost at once, then the feedback's share, zero at rest.
            last = _mm_add_ss(_mm_add_ss(known, quarter), spread);
            in_prev = in_part;
            keep(stages);
            return _mm_cvtss_f32(_mm_mul_ss(this->stages, out_gain));
        }

        // Keeps the new stages, limited, and their soft limits for the next
        // sample: g(x) = x - e |e| / 2 with e = x - clamp(x, -1, 1), doubled
        // (the weights are halved), the third one's sign turned over where it
        // folds (the soft limit is odd, so that is the fold). A not-a-number
        // (only from a caller's not-a-number input: the stages are bounded sums
        // of bounded values) ends at the limit.
        void keep(__m128 x)
        {
            const __m128 limited = _mm_min_ps(_mm_max_ps(x, minus_limit), limit);
            const __m128 excess = _mm_sub_ps(limited, _mm_min_ps(_mm_max_ps(x, minus_one), one));
            const __m128 raw = _mm_sub_ps(_mm_add_ps(limited, limited), _mm_mul_ps(excess, abs(excess)));
            stages = limited;
            soft = _mm_xor_ps(raw, _mm_and_ps(_mm_cmpgt_ps(abs(x), fold_level), sign_bits()));
        }

        // Lane i takes lane (i - n) mod 4: with the stages in the order 4, 1,
        // 2, 3, stage k takes stage k - n (wrapped lanes meet zero weights).
        template <int N>
        static __m128 turn(__m128 v)
        {
            return _mm_shuffle_ps(v, v, _MM_SHUFFLE((3 - N) & 3, (2 - N) & 3, (1 - N) & 3, (0 - N) & 3));
        }

        // Lane 0 in every lane.
        static __m128 all(__m128 v) { return _mm_shuffle_ps(v, v, _MM_SHUFFLE(0, 0, 0, 0)); }
        static __m128 sign_bits() { return _mm_set1_ps(-0.0f); }
        static __m128 abs(__m128 v) { return _mm_andnot_ps(sign_bits(), v); }
        static __m128 flush(__m128 v) { return _mm_andnot_ps(_mm_cmplt_ps(abs(v), _mm_set1_ps(kTiny)), v); }

        // State: the stages, their (folded, doubled) soft limits, u_prev's share
        // of every stage (b^k u_prev), the last stage plus 0.125 before its limit.
        __m128 stages;
        __m128 soft;
        __m128 in_prev;
        __m128 last;
        // Coefficients; see the filter's fields.
        __m128 b_pow;
        __m128 weight[4];
        __m128 b_pow_gain;
        __m128 b_pow_snap;
        __m128 fold_level;
        __m128 rest_spread;
        __m128 last_gain;
        __m128 last_snap;
        __m128 k_inv_step;
        __m128 k_inv_step_offset;
        __m128 out_gain;
        // Constants kept at hand.
        __m128 one = _mm_set1_ps(1.0f);
        __m128 minus_one = _mm_set1_ps(-1.0f);
        __m128 limit = _mm_set1_ps(kStateLimit);
        __m128 minus_limit = _mm_set1_ps(-kStateLimit);
        __m128 rest_value = _mm_set1_ps(kRestValue);
        __m128 round_magic = _mm_set1_ps(kRoundMagic);
        __m128 quarter = _mm_set1_ps(kLoopOffset);
    };

    void update_coefs();

    // State, in the lanes' order of stages: the four stages (limited), their
    // soft limits doubled (unfolded), u_prev's share of every stage (b^k
    // u_prev); and the last stage plus 0.125 before its limit, which the
    // feedback reads.
    float _stages[4] = {};
    float _soft[4] = {};
    float _in_prev[4] = {};
    float _last = 0.125f;

    // Settings.
    float _sample_freq = 176400.0f;
    float _cutoff = 4000.0f;
    float _resonance = 0.4f;
    float _drive = 0.0f;

    // Coefficients, in the lanes' order of stages: b^k; the weights of old
    // state k - n in stage k for n = 0 to 3, halved; b^k times the feedback's
    // linear gain and its quantised step; the fold level of the third stage
    // (the others never fold).
    float _b = 1.0f;
    float _b_pow[4] = {};
    float _weight[4][4] = {};
    float _b_pow_gain[4] = {};
    float _b_pow_snap[4] = {};
    float _fold_level[4] = {};
    float _out_gain = 1.0f;
    // For the loop: b^4 times the feedback's linear gain, what the loop's
    // arithmetic makes of it at rest, b^4 times the quantised step, k / step,
    // and k / step times the saturator's value at rest.
    float _last_gain = 0.0f;
    float _rest_spread = 0.0f;
    float _last_snap = 0.0f;
    float _k_inv_step = 0.0f;
    float _k_inv_step_offset = 0.0f;
    // The quantiser pulls f towards round(f / step) x step by `mix`: the linear
    // gain is k x (1 - mix), the quantised step mix x step.
    float _inv_step = 1024.0f;
    float _keep = 1.0f;
    float _snap = 0.0f;
};

}  // namespace zarquette
