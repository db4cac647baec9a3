#include "zarquette/SampleVoice.h"

#include "dsp/FloatGuard.h"

#include <emmintrin.h>

#include <algorithm>
#include <cmath>

namespace zarquette
{

void SampleVoice::start(const WavFile& recording, float rate, float gain, float pan)
{
    pan = dsp::clamp_finite(pan, -1.0f, 1.0f);
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

// Four output frames at once, each lane computing exactly what the one-frame
// loop below computes for its frame: the reads stay scalar (each frame has its
// own position), the interpolation, gains and mixing run in SSE2 lanes.
void SampleVoice::render_four(const std::int16_t* samples, float* left, float* right)
{
    std::uint64_t p[4];
    for (std::uint64_t& q : p)
    {
        q = _position;
        _position += _increment;
    }
    const auto at = [&](int j, std::uint32_t offset) {
        return static_cast<int>(samples[static_cast<std::uint32_t>(p[j] >> 32) + offset]);
    };
    const auto fraction = [&](int j) { return static_cast<int>(static_cast<std::uint32_t>(p[j])); };
    const __m128 to_float = _mm_set1_ps(1.0f / 32768.0f);
    const __m128 a = _mm_mul_ps(_mm_cvtepi32_ps(_mm_setr_epi32(at(0, 0), at(1, 0), at(2, 0), at(3, 0))), to_float);
    const __m128 b = _mm_mul_ps(_mm_cvtepi32_ps(_mm_setr_epi32(at(0, 1), at(1, 1), at(2, 1), at(3, 1))), to_float);
    // The unsigned 32-bit fraction as a float, rounded once as a plain
    // conversion would: both 16-bit halves convert exactly, the sum rounds.
    const __m128i frac = _mm_setr_epi32(fraction(0), fraction(1), fraction(2), fraction(3));
    const __m128 high = _mm_mul_ps(_mm_cvtepi32_ps(_mm_srli_epi32(frac, 16)), _mm_set1_ps(65536.0f));
    const __m128 low = _mm_cvtepi32_ps(_mm_and_si128(frac, _mm_set1_epi32(0xFFFF)));
    const __m128 x = _mm_mul_ps(_mm_add_ps(high, low), _mm_set1_ps(1.0f / 4294967296.0f));
    const __m128 s = _mm_add_ps(a, _mm_mul_ps(x, _mm_sub_ps(b, a)));
    _mm_storeu_ps(left, _mm_add_ps(_mm_loadu_ps(left), _mm_mul_ps(s, _mm_set1_ps(_left_gain))));
    _mm_storeu_ps(right, _mm_add_ps(_mm_loadu_ps(right), _mm_mul_ps(s, _mm_set1_ps(_right_gain))));
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
    int f = 0;
    for (; f + 4 <= k; f += 4)
    {
        render_four(samples, left + f, right + f);
    }
    constexpr float to_float = 1.0f / 32768.0f;
    constexpr float fraction_scale = 1.0f / 4294967296.0f;
    for (; f < k; ++f)
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
