#include "Mix.h"

#include <algorithm>

namespace recgen
{

void Mix::add(double offset, const Gesture& g, Rng& rng)
{
    const std::vector<float> part = _synth.render(g, rng);
    const auto first = static_cast<std::size_t>(std::max(0.0, offset) * _rate);
    for (std::size_t i = 0; i < part.size() && first + i < _samples.size(); ++i)
    {
        _samples[first + i] += part[i];
    }
}

}  // namespace recgen
