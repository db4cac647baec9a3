#include "Master.h"

#include "Pi.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace recgen
{

void Master::remove_dc(std::vector<float>& s) const
{
    // A gentle high-pass at 20 Hz takes out slow drifts, then the mean goes.
    const double k = std::exp(-2.0 * pi * 20.0 / _rate);
    double x1 = 0.0, y1 = 0.0;
    double sum = 0.0;
    for (float& v : s)
    {
        const double y = v - x1 + k * y1;
        x1 = v;
        y1 = y;
        v = static_cast<float>(y);
        sum += y;
    }
    const auto mean = static_cast<float>(sum / static_cast<double>(s.size()));
    for (float& v : s)
    {
        v -= mean;
    }
}

void Master::fade(std::vector<float>& s) const
{
    const std::size_t len = std::min(s.size() / 4, static_cast<std::size_t>(0.006 * _rate));
    for (std::size_t i = 0; i < len; ++i)
    {
        const auto g = static_cast<float>(0.5 - 0.5 * std::cos(pi * static_cast<double>(i) / static_cast<double>(len)));
        s[i] *= g;
        s[s.size() - 1 - i] *= g;
    }
}

std::vector<std::int16_t> Master::quantise(const std::vector<float>& s) const
{
    float peak = 0.0f;
    for (float v : s)
    {
        peak = std::max(peak, std::fabs(v));
    }
    const double gain = peak > 0.0f ? 32768.0 * std::pow(10.0, _peak_db / 20.0) / peak : 0.0;
    std::vector<std::int16_t> out(s.size());
    for (std::size_t i = 0; i < s.size(); ++i)
    {
        const double v = std::clamp(std::round(s[i] * gain), -32768.0, 32767.0);
        out[i] = static_cast<std::int16_t>(v);
    }
    return out;
}

std::vector<std::int16_t> Master::finish(std::vector<float> samples) const
{
    if (samples.empty())
    {
        return {};
    }
    remove_dc(samples);
    fade(samples);
    return quantise(samples);
}

}  // namespace recgen
