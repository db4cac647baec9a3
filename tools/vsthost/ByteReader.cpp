#include "ByteReader.h"

#include <cstring>

namespace vsthost
{

std::uint32_t ByteReader::take(std::size_t n, bool big_endian)
{
    std::uint32_t v = 0;
    for (std::size_t i = 0; i < n; ++i)
    {
        const std::uint32_t byte = _data[_pos + i];
        v |= big_endian ? byte << (8 * (n - 1 - i)) : byte << (8 * i);
    }
    _pos += n;
    return v;
}

bool ByteReader::get_number(std::size_t n, bool big_endian, std::uint32_t& out)
{
    if (get_remaining() < n)
    {
        return false;
    }
    out = take(n, big_endian);
    return true;
}

bool ByteReader::get_u32_be(std::uint32_t& out)
{
    return get_number(4, true, out);
}

bool ByteReader::get_i32_be(std::int32_t& out)
{
    std::uint32_t v = 0;
    if (!get_u32_be(v))
    {
        return false;
    }
    out = static_cast<std::int32_t>(v);
    return true;
}

bool ByteReader::get_float_be(float& out)
{
    std::uint32_t v = 0;
    if (!get_u32_be(v))
    {
        return false;
    }
    std::memcpy(&out, &v, sizeof out);
    return true;
}

bool ByteReader::get_u32_le(std::uint32_t& out)
{
    return get_number(4, false, out);
}

bool ByteReader::get_u16_le(std::uint16_t& out)
{
    return get_narrow(false, out);
}

bool ByteReader::get_u16_be(std::uint16_t& out)
{
    return get_narrow(true, out);
}

bool ByteReader::get_u8(std::uint8_t& out)
{
    return get_narrow(true, out);
}

bool ByteReader::get_bytes(std::size_t n, const std::uint8_t*& out)
{
    if (get_remaining() < n)
    {
        return false;
    }
    out = _data + _pos;
    _pos += n;
    return true;
}

bool ByteReader::skip(std::size_t n)
{
    const std::uint8_t* ignored = nullptr;
    return get_bytes(n, ignored);
}

}  // namespace vsthost
