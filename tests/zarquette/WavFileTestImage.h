#pragma once

// Builds RIFF WAVE images in memory, chunk by chunk, for the tests of the
// reader and of everything that plays recordings.

#include "zarquette/WavFile.h"

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <vector>

namespace wav_test
{

using Bytes = std::vector<std::uint8_t>;

inline void put_u16(Bytes& b, unsigned v)
{
    b.push_back(static_cast<std::uint8_t>(v));
    b.push_back(static_cast<std::uint8_t>(v >> 8));
}

inline void put_u32(Bytes& b, std::uint32_t v)
{
    put_u16(b, v & 0xFFFFu);
    put_u16(b, v >> 16);
}

inline void put_tag(Bytes& b, const char* tag)
{
    for (int i = 0; i < 4; ++i)
    {
        b.push_back(static_cast<std::uint8_t>(tag[i]));
    }
}

// A chunk with its header, declaring declared_size; an odd body gets its pad byte.
inline Bytes chunk(const char* tag, const Bytes& body, std::uint32_t declared_size)
{
    Bytes b;
    put_tag(b, tag);
    put_u32(b, declared_size);
    b.insert(b.end(), body.begin(), body.end());
    if (body.size() % 2 != 0)
    {
        b.push_back(0);
    }
    return b;
}

inline Bytes chunk(const char* tag, const Bytes& body)
{
    return chunk(tag, body, static_cast<std::uint32_t>(body.size()));
}

inline Bytes fmt(unsigned format, unsigned channels, std::uint32_t rate, unsigned align, unsigned bits,
                 std::size_t extra = 0)
{
    Bytes b;
    put_u16(b, format);
    put_u16(b, channels);
    put_u32(b, rate);
    put_u32(b, rate * align);
    put_u16(b, align);
    put_u16(b, bits);
    b.resize(b.size() + extra, 0);
    return chunk("fmt ", b);
}

inline Bytes mono16(std::uint32_t rate = 22050)
{
    return fmt(1, 1, rate, 2, 16);
}

inline Bytes data(const std::vector<std::int16_t>& samples)
{
    Bytes b;
    for (std::int16_t s : samples)
    {
        put_u16(b, static_cast<std::uint16_t>(s));
    }
    return chunk("data", b);
}

// A RIFF WAVE image of the given chunks; the RIFF size counts them all unless
// given.
inline Bytes riff(std::initializer_list<Bytes> chunks, long riff_size = -1)
{
    Bytes body;
    for (const Bytes& c : chunks)
    {
        body.insert(body.end(), c.begin(), c.end());
    }
    Bytes b;
    put_tag(b, "RIFF");
    put_u32(b, riff_size >= 0 ? static_cast<std::uint32_t>(riff_size) : static_cast<std::uint32_t>(body.size() + 4));
    put_tag(b, "WAVE");
    b.insert(b.end(), body.begin(), body.end());
    return b;
}

// Loads a mono 16-bit image of these samples into w; the image must outlive w's use.
inline std::unique_ptr<Bytes> load_samples(zarquette::WavFile& w, const std::vector<std::int16_t>& samples,
                                           std::uint32_t rate)
{
    auto image = std::make_unique<Bytes>(riff({mono16(rate), data(samples)}));
    w.load_image(image->data(), image->size());
    return image;
}

}  // namespace wav_test
