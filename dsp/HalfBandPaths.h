#pragma once

#include "dsp/FloatGuard.h"

#include <array>
#include <vector>

namespace dsp
{

// The two all-pass chains of a polyphase half-band filter, shared by both
// directions: stages of the even coefficients (0, 2, 4, ...) form path A, the odd
// ones path B, each run in rising coefficient order.
template <int N>
class HalfBandPaths
{
    static_assert(N >= 1, "a half-band filter needs at least one stage");

public:
    // Takes the first N entries; missing ones become 0 (a one-sample delay), and
    // values outside [0, 1) are clamped so that every stage stays stable.
    void load_coefs(const std::vector<double>& coefs)
    {
        for (std::size_t i = 0; i < _stages.size(); ++i)
        {
            const double c = i < coefs.size() ? coefs[i] : 0.0;
            _stages[i].coef = clamp_finite(static_cast<float>(c), 0.0f, kMaxCoef);
        }
    }

    void copy_coefs(const float* coefs)
    {
        for (std::size_t i = 0; i < _stages.size(); ++i)
        {
            _stages[i].coef = clamp_finite(coefs[i], 0.0f, kMaxCoef);
        }
    }

    float get_coef(int i) const { return _stages[static_cast<std::size_t>(i)].coef; }

    void clear_state()
    {
        for (Stage& s : _stages)
        {
            s.x_prev = 0.0f;
            s.y_prev = 0.0f;
        }
    }

    // Sends tiny states to zero; callers run it once per block (see flush_tiny).
    void flush_state()
    {
        for (Stage& s : _stages)
        {
            s.x_prev = flush_tiny(s.x_prev);
            s.y_prev = flush_tiny(s.y_prev);
        }
    }

    bool state_is_normal() const
    {
        for (const Stage& s : _stages)
        {
            if (is_denormal(s.y_prev))
            {
                return false;
            }
        }
        return true;
    }

    float run_a(float x) { return run_path(0, x); }
    float run_b(float x) { return run_path(1, x); }

private:
    static constexpr float kMaxCoef = 0.99999f;

    struct Stage
    {
        float coef = 0.0f;
        float x_prev = 0.0f;
        float y_prev = 0.0f;

        // First-order all-pass: y = (x - y_prev) * coef + x_prev. Not flushed
        // here: the audio thread runs with flush-to-zero, and other callers
        // flush the states once per block.
        float process(float x)
        {
            const float y = (x - y_prev) * coef + x_prev;
            x_prev = x;
            y_prev = y;
            return y;
        }
    };

    float run_path(int first, float x)
    {
        for (int i = first; i < N; i += 2)
        {
            x = _stages[static_cast<std::size_t>(i)].process(x);
        }
        return x;
    }

    std::array<Stage, N> _stages{};
};

}  // namespace dsp
