#pragma once

// RIFF images chunk by chunk, for the WAV readers of the effect and of the
// host tool: sizes as declared (right or wrong), odd bodies padded.

#include "tests/support/Bytes.h"

#include <initializer_list>

namespace zq_test
{

// A chunk declaring its body's size, or declared_size when given; an odd body
// gets its pad byte.
inline Bytes chunk(const char* tag, const Bytes& body, std::int64_t declared_size = -1)
{
    Bytes b;
    put_text(b, tag);
    put_le(b, declared_size >= 0 ? static_cast<std::uint64_t>(declared_size) : body.size(), 4);
    put_bytes(b, body);
    b.resize(b.size() + body.size() % 2, 0);
    return b;
}

// A "fmt " chunk: format tag, channels, rate, block align, bits, and extra
// zero bytes after them.
inline Bytes fmt(unsigned format, unsigned channels, std::uint32_t rate, unsigned align, unsigned bits,
                 std::size_t extra = 0)
{
    Bytes b;
    put_le(b, format, 2);
    put_le(b, channels, 2);
    put_le(b, rate, 4);
    put_le(b, std::uint64_t{rate} * align, 4);
    put_le(b, align, 2);
    put_le(b, bits, 2);
    b.resize(b.size() + extra, 0);
    return chunk("fmt ", b);
}

// A RIFF WAVE image of the given chunks; the RIFF size counts them all unless
// given.
inline Bytes riff(std::initializer_list<Bytes> chunks, long riff_size = -1)
{
    Bytes body;
    for (const Bytes& c : chunks)
    {
        put_bytes(body, c);
    }
    Bytes b;
    put_text(b, "RIFF");
    put_le(b, riff_size >= 0 ? static_cast<std::uint64_t>(riff_size) : body.size() + 4, 4);
    put_text(b, "WAVE");
    put_bytes(b, body);
    return b;
}

}  // namespace zq_test
