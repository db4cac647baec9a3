#include "zarquette/SamplePlayer.h"

namespace zarquette
{

namespace
{

static_assert(SamplePlayer::nbr_voices == 64, "one bit of the busy mask per voice");

// Index of the lowest set bit of a non-zero mask (every compiler of this
// project has the builtin).
int lowest_bit(std::uint64_t mask)
{
    return __builtin_ctzll(mask);
}

}  // namespace

void SamplePlayer::resize(int n)
{
    if (n == _nbr_recordings)
    {
        return;
    }
    _recordings.reset(n > 0 ? new WavFile[static_cast<std::size_t>(n)] : nullptr);
    _nbr_recordings = n > 0 ? n : 0;
}

int SamplePlayer::load(int i, const char* name)
{
    return (i >= 0 && i < _nbr_recordings) ? _recordings[i].load(name) : -1;
}

void SamplePlayer::stop_all()
{
    for (SampleVoice& v : _voices)
    {
        v.stop();
    }
    _busy = 0;
}

int SamplePlayer::play(int index, float gain, float pan, float speed)
{
    if (index < 0 || index >= _nbr_recordings)
    {
        return -1;
    }
    const WavFile& recording = _recordings[index];
    const float rate = recording.get_sample_freq() / _sample_freq * speed;
    // Whole frames per output frame must fit the voice's 32 upper bits.
    if (!(rate > 0.0f && rate < 4294967296.0f))
    {
        return -1;
    }
    if (_busy == ~std::uint64_t(0))
    {
        return -1;
    }
    const int v = lowest_bit(~_busy);
    _voices[v].start(recording, rate, gain, pan);
    _busy |= std::uint64_t(1) << v;
    return 0;
}

void SamplePlayer::render(float* left, float* right, int n)
{
    for (std::uint64_t todo = _busy; todo != 0; todo &= todo - 1)
    {
        const int v = lowest_bit(todo);
        _voices[v].render(left, right, n);
        if (!_voices[v].is_busy())
        {
            _busy &= ~(std::uint64_t(1) << v);
        }
    }
}

}  // namespace zarquette
