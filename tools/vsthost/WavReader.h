#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <vector>

namespace vsthost
{

// Streams the samples of a RIFF WAVE file as floats: integer PCM of 8, 16, 24
// or 32 bits and IEEE floats of 32 or 64 bits, also in the extensible
// format. A data chunk that claims more bytes than the file holds ends where
// the file ends.
class WavReader
{
public:
    // Reads the header; throws std::runtime_error when the stream is no WAVE
    // file this reader understands.
    explicit WavReader(std::istream& in);

    int get_channels() const { return _channels; }
    double get_sample_rate() const { return _sample_rate; }
    // Frames the header announces; the file may end earlier.
    std::uint64_t get_frame_count() const { return _data_bytes / _frame_bytes; }

    // Reads up to frames frames into one buffer per channel; answers the
    // frames read, 0 at the end.
    std::size_t read(float* const* channels, std::size_t frames);

private:
    void read_format(const std::vector<std::uint8_t>& fmt);
    float decode(const std::uint8_t* p) const;

    std::istream& _in;
    int _channels = 0;
    double _sample_rate = 0.0;
    int _bits = 0;
    bool _is_float = false;
    std::size_t _frame_bytes = 1;
    std::uint64_t _data_bytes = 0;
    std::uint64_t _data_left = 0;
    std::vector<std::uint8_t> _buffer;
};

}  // namespace vsthost
