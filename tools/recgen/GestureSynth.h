#pragma once

#include "Gesture.h"
#include "Rng.h"

#include <vector>

namespace recgen
{

// Renders gestures with a source-filter voice: a band-limited pulse train and
// noise, shaped by a cascade of formant resonators, plus a parallel noise band.
class GestureSynth
{
public:
    explicit GestureSynth(double rate) : _rate(rate) {}

    // The gesture's samples: peak-normalised, saturated by its drive, scaled by
    // its gain.
    std::vector<float> render(const Gesture& g, Rng& rng) const;

private:
    double _rate;
};

}  // namespace recgen
