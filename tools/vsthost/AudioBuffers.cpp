#include "AudioBuffers.h"

#include <algorithm>

namespace vsthost
{

AudioBuffers::AudioBuffers(int channels, std::size_t frames)
    : _channels(channels),
      _frames(frames),
      _data(static_cast<std::size_t>(std::max(channels, 1)), std::vector<float>(std::max<std::size_t>(frames, 1)))
{
    for (auto& channel : _data)
    {
        _pointers.push_back(channel.data());
    }
}

void AudioBuffers::clear()
{
    for (auto& channel : _data)
    {
        std::fill(channel.begin(), channel.end(), 0.0f);
    }
}

}  // namespace vsthost
