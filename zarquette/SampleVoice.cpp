#include "zarquette/SampleVoice.h"

#include "dsp/FloatGuard.h"

#include <emmintrin.h>

#include <algorithm>
#include <cmath>
#include <cstring>

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

namespace
{

// A recording's sample and its right neighbour, as one 32-bit load.
__m128i load_pair(const std::int16_t* samples, std::uint64_t position)
{
    std::int32_t pair;
    std::memcpy(&pair, samples + static_cast<std::uint32_t>(position >> 32), sizeof pair);
    return _mm_cvtsi32_si128(pair);
}

}  // namespace

// Four output frames at a time, each lane computing exactly what the one-frame
// loop below computes for its frame: the reads stay scalar (each frame has its
// own position), the rest runs in SSE2 lanes over the whole run of frames. The
// recording's 2^-15 scale moves into the gains, and the interpolation works on
// the whole numbers: scaling by a power of two does not change any rounding.
int SampleVoice::render_fours(const std::int16_t* samples, float* left, float* right, int frames)
{
    constexpr float to_float = 1.0f / 32768.0f;
    const __m128 gain_l = _mm_set1_ps(_left_gain * to_float);
    const __m128 gain_r = _mm_set1_ps(_right_gain * to_float);
    // The fractions of the four positions (the low 32 bits), which advance on
    // their own: a carry into the whole frames never reaches them. As floats
    // they are rounded once, as a plain conversion would: both 16-bit halves
    // convert exactly and the sum rounds.
    const std::uint64_t step = _increment;
    std::uint64_t p = _position;
    __m128i fraction = _mm_setr_epi32(static_cast<int>(static_cast<std::uint32_t>(p)),
                                      static_cast<int>(static_cast<std::uint32_t>(p + step)),
                                      static_cast<int>(static_cast<std::uint32_t>(p + 2 * step)),
                                      static_cast<int>(static_cast<std::uint32_t>(p + 3 * step)));
    const __m128i fraction_step = _mm_set1_epi32(static_cast<int>(static_cast<std::uint32_t>(4 * step)));
    const __m128i low_half = _mm_set1_epi32(0xFFFF);
    const __m128 high_scale = _mm_set1_ps(1.0f / 65536.0f);
    const __m128 low_scale = _mm_set1_ps(1.0f / 4294967296.0f);
    int f = 0;
    for (; f + 4 <= frames; f += 4)
    {
        // Sample and neighbour of each frame, as 16-bit pairs a0 b0 a1 b1 ...
        const __m128i pairs =
            _mm_unpacklo_epi64(_mm_unpacklo_epi32(load_pair(samples, p), load_pair(samples, p + step)),
                               _mm_unpacklo_epi32(load_pair(samples, p + 2 * step), load_pair(samples, p + 3 * step)));
        const __m128i a = _mm_srai_epi32(_mm_slli_epi32(pairs, 16), 16);
        const __m128i b = _mm_srai_epi32(pairs, 16);
        const __m128 x = _mm_add_ps(_mm_mul_ps(_mm_cvtepi32_ps(_mm_srli_epi32(fraction, 16)), high_scale),
                                    _mm_mul_ps(_mm_cvtepi32_ps(_mm_and_si128(fraction, low_half)), low_scale));
        const __m128 s = _mm_add_ps(_mm_cvtepi32_ps(a), _mm_mul_ps(x, _mm_cvtepi32_ps(_mm_sub_epi32(b, a))));
        _mm_storeu_ps(left + f, _mm_add_ps(_mm_loadu_ps(left + f), _mm_mul_ps(s, gain_l)));
        _mm_storeu_ps(right + f, _mm_add_ps(_mm_loadu_ps(right + f), _mm_mul_ps(s, gain_r)));
        fraction = _mm_add_epi32(fraction, fraction_step);
        p += 4 * step;
    }
    _position = p;
    return f;
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
    // Short runs (tiny host blocks) skip the setup of the four lanes.
    int f = k >= 4 ? render_fours(samples, left, right, k) : 0;
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
