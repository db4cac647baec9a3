#include "GestureSynth.h"

#include "BandPass.h"
#include "BlepSaw.h"
#include "OnePole.h"
#include "Pi.h"
#include "Resonator.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace recgen
{

namespace
{

constexpr int control_block = 16;  // samples between parameter updates
constexpr double ring_out = 0.04;  // seconds after the last pose for the filters to decay

double lerp(double a, double b, double x)
{
    return a + (b - a) * x;
}

double lerp_log(double a, double b, double x)
{
    return a * std::pow(b / a, x);
}

// The pose at time t, interpolated between its neighbours.
Gesture::Pose pose_at(const std::vector<Gesture::Pose>& poses, double t)
{
    const auto next = std::upper_bound(poses.begin(), poses.end(), t,
                                       [](double v, const Gesture::Pose& p) { return v < p.t; });
    if (next == poses.begin())
    {
        return poses.front();
    }
    if (next == poses.end())
    {
        return poses.back();
    }
    const Gesture::Pose& a = *(next - 1);
    const Gesture::Pose& b = *next;
    const double x = (b.t > a.t) ? (t - a.t) / (b.t - a.t) : 1.0;
    Gesture::Pose p;
    p.t = t;
    p.f0 = lerp_log(a.f0, b.f0, x);
    p.voice = lerp(a.voice, b.voice, x);
    p.breath = lerp(a.breath, b.breath, x);
    p.fric = lerp(a.fric, b.fric, x);
    p.fric_freq = lerp_log(a.fric_freq, b.fric_freq, x);
    for (int i = 0; i < Gesture::nbr_formants; ++i)
    {
        p.formant[i] = lerp_log(a.formant[i], b.formant[i], x);
        p.bandwidth[i] = lerp(a.bandwidth[i], b.bandwidth[i], x);
    }
    return p;
}

// Formants that would reach above the recording's band are left out for the
// whole gesture rather than folded down.
int count_usable_formants(const Gesture& g, double rate)
{
    int n = Gesture::nbr_formants;
    for (const Gesture::Pose& p : g.poses)
    {
        while (n > 0 && p.formant[n - 1] > 0.44 * rate)
        {
            --n;
        }
    }
    return n;
}

// Fast white noise in [-1, 1] for the inner loop.
class Noise
{
public:
    explicit Noise(std::uint32_t seed) : _state(seed | 1u) {}
    float next()
    {
        _state ^= _state << 13;
        _state ^= _state >> 17;
        _state ^= _state << 5;
        return static_cast<float>(_state) * (2.0f / 4294967296.0f) - 1.0f;
    }

private:
    std::uint32_t _state;
};

void normalise_and_drive(std::vector<float>& out, const Gesture& g)
{
    float peak = 0.0f;
    for (float v : out)
    {
        peak = std::max(peak, std::fabs(v));
    }
    if (peak <= 0.0f)
    {
        return;
    }
    const double shaped_peak = g.drive > 0.0 ? std::tanh(g.drive) : 1.0;
    for (float& v : out)
    {
        const double x = v / peak;
        const double y = g.drive > 0.0 ? std::tanh(g.drive * x) : x;
        v = static_cast<float>(y / shaped_peak * g.gain);
    }
}

}  // namespace

std::vector<float> GestureSynth::render(const Gesture& g, Rng& rng) const
{
    const auto n = static_cast<std::size_t>(std::ceil((g.get_duration() + ring_out) * _rate));
    std::vector<float> out(n, 0.0f);
    if (n == 0)
    {
        return out;
    }
    const int nbr_formants = count_usable_formants(g, _rate);
    Resonator formants[Gesture::nbr_formants];
    BandPass fric_band[2];  // two in a row: the band's skirts fall off steeply
    OnePole tilt;
    tilt.set(std::min(g.brightness, 0.45 * _rate), _rate);
    BlepSaw saw;
    Noise noise(static_cast<std::uint32_t>(rng.next()));
    const double wobble_phase_a = rng.range(0.0, 2.0 * pi);
    const double wobble_phase_b = rng.range(0.0, 2.0 * pi);

    double period_scale = 1.0;
    float cycle_gain = 1.0f;
    float voice = 0.0f, breath = 0.0f, fric = 0.0f;
    for (std::size_t start = 0; start < n; start += control_block)
    {
        const double t = static_cast<double>(start) / _rate;
        const Gesture::Pose p = pose_at(g.poses, t);
        const double semis = g.vibrato_depth * std::sin(2.0 * pi * g.vibrato_rate * t)
                           + g.wobble_depth * 0.6 * std::sin(2.0 * pi * g.wobble_rate * t + wobble_phase_a)
                           + g.wobble_depth * 0.4 * std::sin(2.0 * pi * g.wobble_rate * 1.73 * t + wobble_phase_b);
        const double f0 = p.f0 * std::exp2(semis / 12.0);
        for (int i = 0; i < nbr_formants; ++i)
        {
            formants[i].set(p.formant[i], p.bandwidth[i], _rate);
        }
        const double fc = std::min(p.fric_freq, 0.42 * _rate);
        fric_band[0].set(fc, fc * g.fric_width, _rate);
        fric_band[1].set(fc, fc * g.fric_width, _rate);
        const double tremolo = 1.0 - g.tremolo_depth * 0.5 * (1.0 + std::sin(2.0 * pi * g.tremolo_rate * t));

        // Levels ramp across the block so that nothing steps.
        const std::size_t end = std::min(n, start + control_block);
        const float steps = static_cast<float>(end - start);
        const float dv = (static_cast<float>(p.voice * tremolo) - voice) / steps;
        const float db = (static_cast<float>(p.breath * tremolo) - breath) / steps;
        const float df = (static_cast<float>(p.fric) - fric) / steps;
        for (std::size_t i = start; i < end; ++i)
        {
            voice += dv;
            breath += db;
            fric += df;
            bool wrapped = false;
            const float pulse = saw.tick(f0 / _rate * period_scale, wrapped) * cycle_gain;
            if (wrapped)
            {
                period_scale = 1.0 / (1.0 + g.jitter * rng.bell());
                cycle_gain = (cycle_gain < 1.0f) ? 1.0f : static_cast<float>(1.0 - g.roughness);
            }
            float x = tilt.process(voice * pulse) + breath * noise.next();
            for (int k = 0; k < nbr_formants; ++k)
            {
                x = formants[k].process(x);
            }
            out[i] = x + fric * fric_band[1].process(fric_band[0].process(noise.next()));
        }
    }
    normalise_and_drive(out, g);
    return out;
}

}  // namespace recgen
