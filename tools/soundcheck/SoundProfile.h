#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace soundcheck
{

// What a render sounds like, reduced to what a listener takes from it: its
// overall level, its long-term spectrum in third-octave bands, the rhythm of
// its envelope on the 16th-note grid, and whether every sample is a normal
// number. Two renders of a chaotic setting part ways sample by sample within a
// fraction of a second, yet agree in all of these; a filter tuned differently
// does not.
struct SoundProfile
{
    // Levels are in dB relative to a full-scale square wave (a full-scale sine
    // reads -3 dB) and never below this floor, so that near-silence compares
    // as equal however it is rounded.
    static constexpr double floor_db = -100.0;
    // One character per 16th note of the grid.
    static constexpr char onset = 'x';
    static constexpr char no_onset = '.';
    static constexpr char unclear = '?';

    // The render as one buffer per channel, all of `frames` frames, at
    // sample_rate; its 16th-note grid runs at `tempo` beats per minute from its
    // first frame.
    static SoundProfile analyse(const std::vector<const float*>& channels, std::size_t frames, double sample_rate,
                                double tempo);

    // The centre frequencies of the bands of band_db: third octaves from 50 Hz
    // to 16 kHz.
    static std::vector<double> get_band_centres();

    // Writes the profile as a C++ initialiser, for pasting a reference into a test.
    void print(std::ostream& out) const;

    double rms_db = floor_db;
    std::vector<double> band_db;
    // The envelope's rise at each 16th note: onset when it jumps by 6 dB or
    // more, no onset below 2 dB, unclear in between.
    std::string onsets;
    std::size_t nan_count = 0;
    std::size_t inf_count = 0;
    std::size_t subnormal_count = 0;
};

}  // namespace soundcheck
