#pragma once

#include <array>

namespace zarquette
{

// The loop engine's step sequence: up to 32 steps, each telling the loop how to
// treat the input while it lasts.
class Pattern
{
public:
    static constexpr int kMaxLength = 32;

    struct Step
    {
        // Beats: the loop's cycle length while this step lasts.
        double period = 0.25;
        // Beats: how far back the loop reads, also how long its gate stays open
        // in each cycle.
        double delay = 0.25;
        // log2 of the filter cutoff in Hz at the step's start and after one period.
        float cutoff_start = 10.0f;
        float cutoff_end = 10.0f;
        float resonance = 0.0f;
        float drive = 0.0f;
        // An inactive step leaves the previous step's settings in force.
        bool active = false;
    };

    virtual ~Pattern() = default;

    int get_length() const { return _length; }
    // n is clamped to [1, 32].
    void set_length(int n);

    // i is clamped to [0, 31].
    Step& use_step(int i);
    const Step& use_step(int i) const;

private:
    std::array<Step, kMaxLength> _steps{};
    int _length = kMaxLength;
};

}  // namespace zarquette
