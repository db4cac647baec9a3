#pragma once

#include "AudioBuffers.h"
#include "DemoSong.h"
#include "WavReader.h"

#include <fstream>
#include <memory>
#include <string>

namespace vsthost
{

// The dry signal of a live session, played over and over: a WAV file, or the
// built-in demo song when no file is named. It streams, so a long file costs
// no more memory than a short one.
class LoopingSource
{
public:
    // Throws std::runtime_error when the file cannot be opened or read.
    LoopingSource(const std::string& path, double demo_rate, double tempo);

    int get_channels() const { return _wav ? _wav->get_channels() : 2; }
    double get_sample_rate() const { return _wav ? _wav->get_sample_rate() : _demo_rate; }
    // Fills frames of every channel; an empty file gives silence.
    void read(AudioBuffers& buffers, std::size_t frames);

private:
    void restart();
    std::size_t read_some(AudioBuffers& buffers, std::size_t offset, std::size_t frames);

    std::string _path;
    double _demo_rate;
    double _tempo;
    std::ifstream _file;
    std::unique_ptr<WavReader> _wav;
    std::unique_ptr<DemoSong> _demo;
    std::vector<float*> _pointers;
};

}  // namespace vsthost
