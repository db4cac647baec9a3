#pragma once

#include "tools/soundcheck/SoundProfile.h"

#include <ostream>
#include <string>
#include <vector>

namespace soundcheck
{

// Whether two renders sound the same: overall RMS within 0.25 dB, every third
// octave from 50 Hz to 16 kHz within 1 dB, no 16th note where one has a clear
// onset and the other clearly none, and not one sample that is NaN, infinite or
// subnormal in either. Each way they differ is kept as a line of text.
class SoundComparison
{
public:
    struct Tolerances
    {
        double rms_db = 0.25;
        double band_db = 1.0;
    };

    SoundComparison(const SoundProfile& a, const SoundProfile& b, const Tolerances& tolerances);
    SoundComparison(const SoundProfile& a, const SoundProfile& b) : SoundComparison(a, b, Tolerances()) {}

    bool is_same() const { return _differences.empty(); }
    const std::vector<std::string>& get_differences() const { return _differences; }
    // Both profiles side by side, then "same sound" or "different sound" and
    // the differences.
    void print(std::ostream& out) const;

private:
    void compare_levels(const Tolerances& tolerances);
    void compare_onsets();
    void check_samples(const SoundProfile& p, const char* name);

    SoundProfile _a;
    SoundProfile _b;
    std::vector<std::string> _differences;
};

}  // namespace soundcheck
