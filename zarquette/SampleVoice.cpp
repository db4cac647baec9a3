#include "zarquette/SampleVoice.h"

#include <algorithm>
#include <cmath>

namespace zarquette
{

void SampleVoice::start(const WavFile& recording, float rate, float gain, float pan)
{
    pan = std::clamp(pan, -1.0f, 1.0f);
    // Whole frames per output frame live in 32 bits; a rate that is not a
    // positive number leaves the voice unable to advance, and it ends at once.
    if (!(rate > 0.0f && rate < 4294967296.0f))
    {
        rate = 0.0f;
    }
    _recording = &recording;
    _rate = rate;
    _left_gain = (1.0f - pan) * gain * 0.5f;
    _right_gain = (1.0f + pan) * gain * 0.5f;
    _position = 0;
    const double whole = std::floor(static_cast<double>(rate));
    const double fraction = (static_cast<double>(rate) - whole) * 4294967296.0;
    _increment = (static_cast<std::uint64_t>(whole) << 32) + static_cast<std::uint32_t>(fraction);
    // Output frames that can be read with a right neighbour to interpolate
    // with, in exact fixed point, counted once here rather than divided out at
    // every block. A voice that does not advance would never end: it is freed
    // at its first render.
    const std::uint64_t nbr_frames = recording.get_nbr_frames();
    const std::uint64_t last = nbr_frames > 0 ? (nbr_frames - 1) << 32 : 0;
    _frames_left = (_increment != 0 && _position < last) ? (last - _position) / _increment : 0;
}

void SampleVoice::render(float* left, float* right, int n)
{
    if (_recording == nullptr)
    {
        return;
    }
    const std::uint64_t block = n > 0 ? static_cast<std::uint64_t>(n) : 0;
    const auto k = static_cast<int>(std::min(_frames_left, block));
    const std::int16_t* samples = _recording->use_samples();
    constexpr float to_float = 1.0f / 32768.0f;
    constexpr float fraction_scale = 1.0f / 4294967296.0f;
    for (int f = 0; f < k; ++f)
    {
        const auto i = static_cast<std::uint32_t>(_position >> 32);
        const float x = static_cast<float>(_position & 0xFFFFFFFFu) * fraction_scale;
        const float a = samples[i] * to_float;
        const float b = samples[i + 1] * to_float;
        const float s = a + x * (b - a);
        left[f] += s * _left_gain;
        right[f] += s * _right_gain;
        _position += _increment;
    }
    if (_frames_left <= block)
    {
        _recording = nullptr;
    }
    _frames_left -= static_cast<std::uint64_t>(k);
}

}  // namespace zarquette
