#pragma once

#include "zarquette/Pattern.h"
#include "zarquette/RndGen.h"

#include <array>

namespace zarquette
{

// Fills a pattern with a random rhythm of stutter steps (short comb-like
// repeats) and hold steps (beat repeats and echoes lasting to the end of a hold
// span). Every number comes from the given generator in a fixed order, so the
// same generator state always yields the same pattern. nuke (0 or 1) raises
// resonance and drive and spreads the cutoffs.
class PatternGenerator
{
public:
    PatternGenerator(RndGen& rnd, float nuke);

    // Fills steps 0 to length - 1.
    void fill(Pattern& pattern);

    // A length in beats: multiplier x 2^k with k drawn from [lo, hi] and the
    // multiplier from {1, 1, 0.75} (plus 2/3 when with_two_thirds) or uniform in
    // [0.5, 1); never below 2^lo.
    double random_octave(int lo, int hi, bool from_table, bool with_two_thirds);

private:
    static constexpr int kStepsPerBeat = 4;
    using Flags = std::array<bool, Pattern::kMaxLength>;

    void make_rhythm(Flags& flags, int n);
    void toggle_runs(Flags& flags, int n);
    void fill_stutter(Pattern::Step& step);
    void fill_hold(Pattern::Step& step, double span, bool gate_mode);
    void pick_hold_lengths(Pattern::Step& step, double span, bool gate_mode);
    float random_cutoff(float amount);

    RndGen& _rnd;
    float _nuke;
};

}  // namespace zarquette
