#pragma once

#include "Gesture.h"
#include "GestureSynth.h"
#include "Rng.h"

#include <cstddef>
#include <vector>

namespace recgen
{

// One recording under construction: gestures rendered and added in at their
// offsets; whatever reaches past the end is cut.
class Mix
{
public:
    Mix(double rate, std::size_t frames) : _rate(rate), _synth(rate), _samples(frames, 0.0f) {}

    void add(double offset, const Gesture& g, Rng& rng);

    double get_rate() const { return _rate; }
    double get_duration() const { return static_cast<double>(_samples.size()) / _rate; }
    std::vector<float>& use_samples() { return _samples; }

private:
    double _rate;
    GestureSynth _synth;
    std::vector<float> _samples;
};

}  // namespace recgen
