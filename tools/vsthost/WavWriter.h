#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>

namespace vsthost
{

// Writes a RIFF WAVE file block by block: 32-bit IEEE float samples, or 16-bit
// integer PCM (rounded to nearest and clipped to full scale, no dither). The
// sizes in the header are written by finish(), when they are known.
class WavWriter
{
public:
    enum class Format
    {
        float32,
        pcm16,
    };

    // The stream must be seekable (a file or a string stream).
    WavWriter(std::ostream& out, int channels, int sample_rate, Format format);

    void write(const float* const* channels, std::size_t frames);
    // Patches the header's sizes; answers false when the stream failed.
    bool finish();
    std::uint64_t get_frames_written() const { return _frames; }

private:
    std::ostream& _out;
    int _channels;
    int _sample_rate;
    Format _format;
    std::uint64_t _frames = 0;
};

}  // namespace vsthost
