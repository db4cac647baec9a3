#pragma once

#include <cstddef>
#include <vector>

namespace vsthost
{

// Separate float buffers per channel and the pointer array the processing
// calls take. At least one channel is kept, so the pointer array is never
// empty even for plug-ins without inputs.
class AudioBuffers
{
public:
    AudioBuffers(int channels, std::size_t frames);

    float** use_pointers() { return _pointers.data(); }
    float* use_channel(int c) { return _pointers[static_cast<std::size_t>(c)]; }
    int get_channels() const { return _channels; }
    std::size_t get_frames() const { return _frames; }
    void clear();

private:
    int _channels;
    std::size_t _frames;
    std::vector<std::vector<float>> _data;
    std::vector<float*> _pointers;
};

}  // namespace vsthost
