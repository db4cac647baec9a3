#include "zarquette/SamplePlayer.h"

namespace zarquette
{

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
    for (SampleVoice& v : _voices)
    {
        if (!v.is_busy())
        {
            v.start(recording, rate, gain, pan);
            return 0;
        }
    }
    return -1;
}

void SamplePlayer::render(float* left, float* right, int n)
{
    for (SampleVoice& v : _voices)
    {
        if (v.is_busy())
        {
            v.render(left, right, n);
        }
    }
}

}  // namespace zarquette
