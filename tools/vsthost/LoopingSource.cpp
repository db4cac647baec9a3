#include "LoopingSource.h"

#include <stdexcept>

namespace vsthost
{

LoopingSource::LoopingSource(const std::string& path, double demo_rate, double tempo)
    : _path(path), _demo_rate(demo_rate), _tempo(tempo)
{
    restart();
}

void LoopingSource::restart()
{
    if (_path.empty())
    {
        _demo = std::make_unique<DemoSong>(_demo_rate, _tempo);
        return;
    }
    _wav.reset();
    _file.close();
    _file.clear();
    _file.open(_path, std::ios::binary);
    if (!_file)
    {
        throw std::runtime_error("cannot open " + _path);
    }
    _wav = std::make_unique<WavReader>(_file);
}

std::size_t LoopingSource::read_some(AudioBuffers& buffers, std::size_t offset, std::size_t frames)
{
    if (_demo)
    {
        return _demo->render(buffers.use_channel(0) + offset, buffers.use_channel(1) + offset, frames);
    }
    _pointers.resize(static_cast<std::size_t>(buffers.get_channels()));
    for (int c = 0; c < buffers.get_channels(); ++c)
    {
        _pointers[static_cast<std::size_t>(c)] = buffers.use_channel(c) + offset;
    }
    return _wav->read(_pointers.data(), frames);
}

void LoopingSource::read(AudioBuffers& buffers, std::size_t frames)
{
    buffers.clear();
    std::size_t done = read_some(buffers, 0, frames);
    // One restart per block at most: a file without frames gives silence
    // instead of spinning.
    if (done < frames)
    {
        restart();
        done += read_some(buffers, done, frames - done);
    }
}

}  // namespace vsthost
