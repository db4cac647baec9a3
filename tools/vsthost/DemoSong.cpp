#include "DemoSong.h"

#include <cmath>

namespace vsthost
{

namespace
{

constexpr int steps_per_bar = 16;
constexpr double two_pi = 6.283185307179586;
// Bass notes per sixteenth in semitones above A1 (55 Hz); -1 rests. Bars 5 to
// 8 move the line up a fourth.
constexpr int bass_line[steps_per_bar] = {0, -1, 0, 12, -1, 0, 10, -1, 0, -1, 7, -1, 0, 3, -1, 5};
constexpr double bass_gate_steps = 0.8;

bool is_kick(int bar, int s)
{
    return s == 0 || s == 8 || (bar % 2 == 1 && s == 10);
}

bool is_snare(int, int s)
{
    return s == 4 || s == 12;
}

}  // namespace

DemoSong::DemoSong(double sample_rate, double tempo)
    : _rate(sample_rate),
      _frames_per_step(sample_rate * 60.0 / tempo / 4.0),
      _frame_count(static_cast<std::uint64_t>(std::llround(_frames_per_step * steps_per_bar * bars)))
{
}

std::size_t DemoSong::render(float* left, float* right, std::size_t frames)
{
    std::size_t done = 0;
    for (; done < frames && _frame < _frame_count; ++done, ++_frame)
    {
        const int step = static_cast<int>(static_cast<double>(_frame) / _frames_per_step);
        if (step != _step)
        {
            start_step(step);
        }
        const float drums = render_kick() + render_snare();
        const float hat = render_hat();
        const float bass = render_bass();
        // Hats a little to the right, everything else in the middle; the mix
        // peaks a few dB below full scale.
        left[done] = 0.35f * (drums + bass) + 0.25f * hat;
        right[done] = 0.35f * (drums + bass) + 0.4f * hat;
    }
    return done;
}

void DemoSong::start_step(int step)
{
    _step = step;
    const int bar = step / steps_per_bar;
    const int s = step % steps_per_bar;
    if (is_kick(bar, s))
    {
        _kick = Voice{0.0, 0.0, 1.0f};
    }
    if (is_snare(bar, s))
    {
        _snare = Voice{0.0, 0.0, 1.0f};
    }
    _hat = Voice{0.0, 0.0, s % 2 == 0 ? 0.6f : 0.3f};
    const int note = bass_line[s];
    if (note >= 0)
    {
        _bass_freq = 55.0 * std::pow(2.0, (note + (bar >= 4 ? 5 : 0)) / 12.0);
        _bass.age = 0.0;
        _bass.level = 0.8f;
        _bass_gate = bass_gate_steps * _frames_per_step / _rate;
    }
}

float DemoSong::next_noise()
{
    _noise_state = _noise_state * 1664525u + 1013904223u;
    return static_cast<float>(static_cast<std::int32_t>(_noise_state) / 2147483648.0);
}

float DemoSong::render_kick()
{
    // A sine that falls from 150 Hz to 50 Hz within a few tens of milliseconds.
    const double t = _kick.age;
    _kick.phase += (50.0 + 100.0 * std::exp(-t * 30.0)) / _rate;
    _kick.age += 1.0 / _rate;
    return _kick.level * static_cast<float>(std::sin(two_pi * _kick.phase) * std::exp(-t * 6.0));
}

float DemoSong::render_snare()
{
    const double t = _snare.age;
    _snare.age += 1.0 / _rate;
    const float noise = next_noise() * static_cast<float>(std::exp(-t * 18.0));
    const float body = static_cast<float>(std::sin(two_pi * 185.0 * t) * std::exp(-t * 25.0));
    return _snare.level * (0.5f * noise + 0.4f * body);
}

float DemoSong::render_hat()
{
    // Noise minus its low-passed self leaves the hiss of a closed hat.
    const float noise = next_noise();
    _hat_lowpass += 0.2f * (noise - _hat_lowpass);
    const double t = _hat.age;
    _hat.age += 1.0 / _rate;
    return _hat.level * (noise - _hat_lowpass) * static_cast<float>(std::exp(-t * 60.0));
}

float DemoSong::render_bass()
{
    const double t = _bass.age;
    _bass.age += 1.0 / _rate;
    _bass.phase += _bass_freq / _rate;
    _bass.phase -= std::floor(_bass.phase);
    const float saw = static_cast<float>(2.0 * _bass.phase - 1.0);
    const float gate = t < _bass_gate ? 1.0f : static_cast<float>(std::exp(-(t - _bass_gate) * 80.0));
    _bass_lowpass += 0.08f * (saw - _bass_lowpass);
    return _bass.level * _bass_lowpass * gate * static_cast<float>(std::exp(-t * 3.0));
}

}  // namespace vsthost
