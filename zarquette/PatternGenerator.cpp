#include "zarquette/PatternGenerator.h"

#include "zarquette/FastMath.h"

#include <algorithm>
#include <cmath>

namespace zarquette
{
namespace
{

constexpr double kOctaveTable[] = {1.0, 1.0, 0.75, 2.0 / 3.0};
constexpr int kRhythmPeriods[] = {2, 2, 3, 3, 3, 3, 4, 4, 6, 8};

void clear_step(Pattern::Step& step)
{
    step.active = false;
    step.period = -2.0;
    step.delay = -2.0;
    step.cutoff_start = 10.0f;
    step.cutoff_end = 10.0f;
    step.resonance = 0.0f;
    step.drive = 0.0f;
}

}  // namespace

PatternGenerator::PatternGenerator(RndGen& rnd, float nuke) : _rnd(rnd), _nuke(nuke)
{
}

double PatternGenerator::random_octave(int lo, int hi, bool from_table, bool with_two_thirds)
{
    double multiplier = 0.0;
    if (from_table)
    {
        multiplier = kOctaveTable[_rnd.gen_int(with_two_thirds ? 4 : 3)];
    }
    else
    {
        multiplier = (static_cast<double>(_rnd.gen_float()) + 1.0) * 0.5;
    }
    const int k = lo + _rnd.gen_int(std::max(hi - lo + 1, 1));
    if (k == lo && multiplier < 1.0)
    {
        multiplier = 1.0;
    }
    return std::ldexp(multiplier, k);
}

void PatternGenerator::fill(Pattern& pattern)
{
    const int n = pattern.get_length();
    Flags flags{};
    const bool gate_mode = _rnd.gen_int(2) == 0;
    if (gate_mode)
    {
        make_rhythm(flags, n);
    }
    if (_rnd.gen_int(gate_mode ? 6 : 2) != 0)
    {
        toggle_runs(flags, n);
    }
    if (_rnd.gen_int(10) == 0)
    {
        _rnd.gen_int(2);  // a draw kept only so that every later draw stays where it is
    }
    const int hold_len = kStepsPerBeat << _rnd.gen_int(2);
    bool held = false;
    for (int s = 0; s < n; ++s)
    {
        Pattern::Step& step = pattern.use_step(s);
        clear_step(step);
        if (s % hold_len == 0)
        {
            held = false;
        }
        if (flags[static_cast<std::size_t>(s)])
        {
            fill_stutter(step);
            held = false;
        }
        else if (!held)
        {
            fill_hold(step, static_cast<double>(hold_len - s % hold_len) / kStepsPerBeat, gate_mode);
            held = true;
        }
        if (step.active)
        {
            step.drive = _rnd.gen_shaped(0.98f * _nuke + 0.01f, 1.0f);
        }
    }
}

// A regular rhythm: every p-th step flagged (or every step but those), repeated
// every len steps.
void PatternGenerator::make_rhythm(Flags& flags, int n)
{
    int len = n;
    if (_rnd.gen_int(4) == 0)
    {
        len = std::min(kStepsPerBeat << _rnd.gen_int(3), n);
    }
    const int p = kRhythmPeriods[_rnd.gen_int(10)];
    const bool inverted = _rnd.gen_int(4) == 0;
    const bool shifted = _rnd.gen_int(11) < 3;
    const int offset = shifted != inverted ? _rnd.gen_int(p) : 0;
    for (int i = 0; i < n; ++i)
    {
        const std::size_t at = static_cast<std::size_t>(i);
        flags[at] = i < len ? (((p - offset + i) % p == 0) != inverted) : flags[at - static_cast<std::size_t>(len)];
    }
}

// Flips one to three short runs of flags, starting on a beat, half beat or
// quarter past.
void PatternGenerator::toggle_runs(Flags& flags, int n)
{
    const int count = _rnd.gen_int(3) + 1;
    for (int c = 0; c < count; ++c)
    {
        const int width = _rnd.gen_int(3) + 1;
        int pos = _rnd.gen_int(std::max(n / kStepsPerBeat, 1)) * kStepsPerBeat;
        if (_rnd.gen_int(5) < 2)
        {
            pos += kStepsPerBeat / 2;
        }
        if (_rnd.gen_int(3) == 0)
        {
            pos += kStepsPerBeat / 4;
        }
        for (int w = 0; w < width; ++w, ++pos)
        {
            if (pos < Pattern::kMaxLength)
            {
                flags[static_cast<std::size_t>(pos)] = !flags[static_cast<std::size_t>(pos)];
            }
        }
    }
}

float PatternGenerator::random_cutoff(float amount)
{
    return 5.0f + 9.25f * _rnd.gen_shaped(0.99f, amount);
}

void PatternGenerator::fill_stutter(Pattern::Step& step)
{
    step.active = true;
    step.period = 1.0 / kStepsPerBeat;
    step.delay = random_octave(-8, -4, false, false);
    step.cutoff_start = random_cutoff(0.0f);
    step.cutoff_end = random_cutoff(0.0f);
    step.resonance = _rnd.gen_shaped(0.98f * _nuke + 0.01f, _nuke) * _nuke * 0.25f;
}

void PatternGenerator::fill_hold(Pattern::Step& step, double span, bool gate_mode)
{
    step.active = true;
    pick_hold_lengths(step, span, gate_mode);
    const float amount = 1.0f - 0.75f * _nuke;
    step.cutoff_start = random_cutoff(amount);
    step.cutoff_end = random_cutoff(amount);
    const float u = _rnd.gen_float();
    const float scale = 0.75f * ((1.0f - u) * _nuke + u) + 0.25f * _nuke;
    step.resonance = _rnd.gen_shaped((_nuke + 1.0f) * 0.25f, 0.75f * _nuke) * scale;
}

// Either a free period and delay of their own, or a period filling the rest of
// the hold span with a delay of the whole span or a shorter repeat inside it.
void PatternGenerator::pick_hold_lengths(Pattern::Step& step, double span, bool gate_mode)
{
    if (!gate_mode && _rnd.gen_int(2) == 0)
    {
        step.period = random_octave(0, 2, true, false);
        step.delay = random_octave(-2, 0, true, true);
        return;
    }
    step.period = span;
    if (_rnd.gen_int(2) == 0)
    {
        step.delay = span;
        return;
    }
    int hi = -1;
    if (_rnd.gen_int(3) == 0)
    {
        hi = static_cast<int>(std::floor(fast_log2(static_cast<float>(span)) + 0.001f));
    }
    hi = std::max(hi, -2);
    step.delay = std::min(random_octave(-3, hi, true, true), span);
}

}  // namespace zarquette
