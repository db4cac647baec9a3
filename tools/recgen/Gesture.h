#pragma once

#include <vector>

namespace recgen
{

// One vocal gesture (a meow, a growl, a hiss, a spoken word): a path through
// poses of a source-filter voice, plus the gesture's modulations. Everything
// between two poses is interpolated (frequencies on a log scale).
struct Gesture
{
    static constexpr int nbr_formants = 4;

    struct Pose
    {
        double t = 0.0;          // seconds from the gesture's start
        double f0 = 500.0;       // Hz, before vibrato and wobble
        double voice = 0.0;      // level of the voiced source
        double breath = 0.0;     // noise through the formants (aspiration)
        double fric = 0.0;       // noise in a band of its own (frication, hiss)
        double fric_freq = 5000.0;
        double formant[nbr_formants] = {700.0, 1800.0, 3500.0, 5000.0};
        double bandwidth[nbr_formants] = {90.0, 120.0, 200.0, 300.0};
    };

    std::vector<Pose> poses;      // rising times; the last one ends the gesture
    double vibrato_rate = 5.5;    // Hz
    double vibrato_depth = 0.0;   // semitones
    double wobble_rate = 3.0;     // Hz: slow or chaotic drift of the pitch
    double wobble_depth = 0.0;    // semitones
    double jitter = 0.005;        // relative spread of each period
    double roughness = 0.0;       // every other period weaker: subharmonics
    double tremolo_rate = 20.0;   // Hz: pulsing of a growl
    double tremolo_depth = 0.0;   // 0 to 1
    double brightness = 4000.0;   // cutoff of the source's tilt, Hz
    double fric_width = 0.5;      // width of the frication band relative to its centre
    double drive = 0.0;           // saturation after peak normalisation, 0: clean
    double gain = 1.0;            // level in the mix, after saturation

    // Appends a pose at time t, copied from the last one and changed by edit.
    template <typename Edit>
    Pose& add(double t, Edit edit)
    {
        Pose p = poses.empty() ? Pose{} : poses.back();
        p.t = t;
        edit(p);
        poses.push_back(p);
        return poses.back();
    }

    double get_duration() const { return poses.empty() ? 0.0 : poses.back().t; }
};

}  // namespace recgen
