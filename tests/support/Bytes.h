#pragma once

// Byte images built by hand for the readers' tests: integers in either byte
// order, four-character tags and raw bytes, appended or written in place.

#include <cstdint>
#include <initializer_list>
#include <vector>

namespace zq_test
{

using Bytes = std::vector<std::uint8_t>;

// The low `size` bytes of v over the bytes from `at` on, least significant first.
inline void set_le(Bytes& b, std::size_t at, std::uint64_t v, int size)
{
    for (int i = 0; i < size; ++i)
    {
        b[at + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(v >> (8 * i));
    }
}

// The same, most significant first.
inline void set_be(Bytes& b, std::size_t at, std::uint64_t v, int size)
{
    for (int i = 0; i < size; ++i)
    {
        b[at + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(v >> (8 * (size - 1 - i)));
    }
}

// The same, appended.
inline void put_le(Bytes& b, std::uint64_t v, int size)
{
    b.resize(b.size() + static_cast<std::size_t>(size));
    set_le(b, b.size() - static_cast<std::size_t>(size), v, size);
}

inline void put_be(Bytes& b, std::uint64_t v, int size)
{
    b.resize(b.size() + static_cast<std::size_t>(size));
    set_be(b, b.size() - static_cast<std::size_t>(size), v, size);
}

inline void put_bytes(Bytes& b, const Bytes& more)
{
    b.insert(b.end(), more.begin(), more.end());
}

inline void put_bytes(Bytes& b, std::initializer_list<int> values)
{
    for (const int v : values)
    {
        b.push_back(static_cast<std::uint8_t>(v));
    }
}

// The characters of a tag or name, without a terminator.
inline void put_text(Bytes& b, const char* text)
{
    for (; *text != '\0'; ++text)
    {
        b.push_back(static_cast<std::uint8_t>(*text));
    }
}

}  // namespace zq_test
