#include "WavWriter.h"

#include "ByteWriter.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace vsthost
{

namespace
{

std::uint16_t bytes_per_sample(WavWriter::Format format)
{
    return format == WavWriter::Format::float32 ? 4 : 2;
}

void put_tag(ByteWriter& w, const char* tag)
{
    w.put_bytes(reinterpret_cast<const std::uint8_t*>(tag), 4);
}

std::size_t header_size(WavWriter::Format format)
{
    // Float files carry a two-byte extension size in their format chunk and a
    // fact chunk with the frame count, as non-PCM WAVE files should.
    return format == WavWriter::Format::float32 ? 58 : 44;
}

std::vector<std::uint8_t> make_header(int channels, int rate, WavWriter::Format format, std::uint64_t frames)
{
    const std::uint16_t sample_bytes = bytes_per_sample(format);
    const std::uint16_t block = static_cast<std::uint16_t>(channels * sample_bytes);
    const auto data_bytes = static_cast<std::uint32_t>(frames * block);
    const bool is_float = format == WavWriter::Format::float32;
    ByteWriter w;
    put_tag(w, "RIFF");
    w.put_u32_le(static_cast<std::uint32_t>(header_size(format) - 8 + data_bytes));
    put_tag(w, "WAVE");
    put_tag(w, "fmt ");
    w.put_u32_le(is_float ? 18 : 16);
    w.put_u16_le(is_float ? 3 : 1);
    w.put_u16_le(static_cast<std::uint16_t>(channels));
    w.put_u32_le(static_cast<std::uint32_t>(rate));
    w.put_u32_le(static_cast<std::uint32_t>(rate) * block);
    w.put_u16_le(block);
    w.put_u16_le(static_cast<std::uint16_t>(sample_bytes * 8));
    if (is_float)
    {
        w.put_u16_le(0);
        put_tag(w, "fact");
        w.put_u32_le(4);
        w.put_u32_le(static_cast<std::uint32_t>(frames));
    }
    put_tag(w, "data");
    w.put_u32_le(data_bytes);
    return w.use_bytes();
}

}  // namespace

WavWriter::WavWriter(std::ostream& out, int channels, int sample_rate, Format format)
    : _out(out), _channels(channels), _sample_rate(sample_rate), _format(format)
{
    const std::vector<std::uint8_t> header = make_header(channels, sample_rate, format, 0);
    _out.write(reinterpret_cast<const char*>(header.data()), static_cast<std::streamsize>(header.size()));
}

void WavWriter::write(const float* const* channels, std::size_t frames)
{
    ByteWriter w;
    for (std::size_t i = 0; i < frames; ++i)
    {
        for (int c = 0; c < _channels; ++c)
        {
            const float v = channels[c][i];
            if (_format == Format::float32)
            {
                std::uint32_t bits = 0;
                std::memcpy(&bits, &v, 4);
                w.put_u32_le(bits);
            }
            else
            {
                const float scaled = std::nearbyint(std::clamp(v, -1.0f, 1.0f) * 32767.0f);
                w.put_u16_le(static_cast<std::uint16_t>(static_cast<std::int16_t>(std::isnan(v) ? 0.0f : scaled)));
            }
        }
    }
    _out.write(reinterpret_cast<const char*>(w.use_bytes().data()), static_cast<std::streamsize>(w.use_bytes().size()));
    _frames += frames;
}

bool WavWriter::finish()
{
    const std::vector<std::uint8_t> header = make_header(_channels, _sample_rate, _format, _frames);
    const auto end = _out.tellp();
    _out.seekp(0);
    _out.write(reinterpret_cast<const char*>(header.data()), static_cast<std::streamsize>(header.size()));
    _out.seekp(end);
    _out.flush();
    return static_cast<bool>(_out);
}

}  // namespace vsthost
