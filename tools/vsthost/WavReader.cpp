#include "WavReader.h"

#include "ByteReader.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string>

namespace vsthost
{

namespace
{

constexpr std::uint16_t format_pcm = 1;
constexpr std::uint16_t format_float = 3;
constexpr std::uint16_t format_extensible = 0xFFFE;
// Format chunks are small; anything larger is not a format chunk we know.
constexpr std::uint32_t max_fmt_size = 1024;

std::uint32_t read_u32_le(std::istream& in)
{
    std::uint8_t b[4] = {};
    in.read(reinterpret_cast<char*>(b), 4);
    ByteReader r(b, in ? 4 : 0);
    std::uint32_t v = 0;
    if (!r.get_u32_le(v))
    {
        throw std::runtime_error("WAV file ends inside its header");
    }
    return v;
}

std::string read_tag(std::istream& in)
{
    char tag[4] = {};
    in.read(tag, 4);
    return in ? std::string(tag, 4) : std::string();
}

}  // namespace

WavReader::WavReader(std::istream& in) : _in(in)
{
    if (read_tag(in) != "RIFF")
    {
        throw std::runtime_error("not a RIFF file");
    }
    read_u32_le(in);
    if (read_tag(in) != "WAVE")
    {
        throw std::runtime_error("not a WAVE file");
    }
    for (;;)
    {
        const std::string tag = read_tag(in);
        if (tag.empty())
        {
            throw std::runtime_error("WAV file has no data chunk");
        }
        const std::uint32_t size = read_u32_le(in);
        if (tag == "fmt ")
        {
            if (size < 16 || size > max_fmt_size)
            {
                throw std::runtime_error("WAV format chunk of odd size");
            }
            std::vector<std::uint8_t> fmt(size);
            in.read(reinterpret_cast<char*>(fmt.data()), size);
            read_format(fmt);
            in.ignore(size & 1u);
        }
        else if (tag == "data")
        {
            if (_channels == 0)
            {
                throw std::runtime_error("WAV data chunk before its format chunk");
            }
            _data_bytes = size - size % _frame_bytes;
            _data_left = _data_bytes;
            return;
        }
        else
        {
            // Chunks are padded to an even size.
            in.ignore(static_cast<std::streamsize>(size) + (size & 1u));
        }
    }
}

void WavReader::read_format(const std::vector<std::uint8_t>& fmt)
{
    ByteReader r(fmt.data(), fmt.size());
    std::uint16_t format = 0;
    std::uint16_t channels = 0;
    std::uint32_t rate = 0;
    std::uint16_t bits = 0;
    r.get_u16_le(format);
    r.get_u16_le(channels);
    r.get_u32_le(rate);
    r.skip(6);  // byte rate and block alignment follow from the rest
    r.get_u16_le(bits);
    if (format == format_extensible && fmt.size() >= 26)
    {
        r.skip(8);  // extension size, valid bits, channel mask
        r.get_u16_le(format);
    }
    const bool pcm_ok = format == format_pcm && (bits == 8 || bits == 16 || bits == 24 || bits == 32);
    const bool float_ok = format == format_float && (bits == 32 || bits == 64);
    if (!pcm_ok && !float_ok)
    {
        throw std::runtime_error("unsupported WAV sample format " + std::to_string(format) + " with "
                                 + std::to_string(bits) + " bits");
    }
    if (channels == 0 || rate == 0)
    {
        throw std::runtime_error("WAV file with no channels or no sample rate");
    }
    _channels = channels;
    _sample_rate = rate;
    _bits = bits;
    _is_float = float_ok;
    _frame_bytes = static_cast<std::size_t>(channels) * (bits / 8u);
}

float WavReader::decode(const std::uint8_t* p) const
{
    if (_is_float)
    {
        if (_bits == 32)
        {
            float f = 0.0f;
            std::memcpy(&f, p, 4);
            return f;
        }
        double d = 0.0;
        std::memcpy(&d, p, 8);
        return static_cast<float>(d);
    }
    if (_bits == 8)
    {
        return (static_cast<int>(p[0]) - 128) / 128.0f;
    }
    // Little-endian signed integers, shifted to the top of 32 bits.
    std::uint32_t v = 0;
    const int bytes = _bits / 8;
    for (int i = 0; i < bytes; ++i)
    {
        v |= std::uint32_t{p[i]} << (8 * (4 - bytes + i));
    }
    return static_cast<float>(static_cast<std::int32_t>(v) / 2147483648.0);
}

std::size_t WavReader::read(float* const* channels, std::size_t frames)
{
    const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(frames, _data_left / _frame_bytes));
    _buffer.resize(wanted * _frame_bytes);
    _in.read(reinterpret_cast<char*>(_buffer.data()), static_cast<std::streamsize>(_buffer.size()));
    const std::size_t got = static_cast<std::size_t>(_in.gcount()) / _frame_bytes;
    _data_left = got < wanted ? 0 : _data_left - got * _frame_bytes;
    const std::size_t sample_bytes = _frame_bytes / static_cast<std::size_t>(_channels);
    for (std::size_t i = 0; i < got; ++i)
    {
        for (int c = 0; c < _channels; ++c)
        {
            channels[c][i] = decode(_buffer.data() + i * _frame_bytes + static_cast<std::size_t>(c) * sample_bytes);
        }
    }
    return got;
}

}  // namespace vsthost
