#pragma once

#include <cstddef>
#include <cstdint>

namespace vsthost
{

// A cursor over bytes from a file that checks every read against the end:
// a read that does not fit answers false and leaves the cursor where it was.
class ByteReader
{
public:
    ByteReader(const std::uint8_t* data, std::size_t size) : _data(data), _size(size) {}

    bool get_u32_be(std::uint32_t& out);
    bool get_i32_be(std::int32_t& out);
    bool get_float_be(float& out);
    bool get_u32_le(std::uint32_t& out);
    bool get_u16_le(std::uint16_t& out);
    bool get_u16_be(std::uint16_t& out);
    bool get_u8(std::uint8_t& out);
    // Points out at the next n bytes and moves past them.
    bool get_bytes(std::size_t n, const std::uint8_t*& out);
    bool skip(std::size_t n);

    std::size_t get_remaining() const { return _size - _pos; }
    std::size_t get_position() const { return _pos; }

private:
    std::uint32_t take(std::size_t n, bool big_endian);
    bool get_number(std::size_t n, bool big_endian, std::uint32_t& out);
    // A number of fewer than four bytes, as wide as out.
    template <typename T>
    bool get_narrow(bool big_endian, T& out)
    {
        std::uint32_t v = 0;
        if (!get_number(sizeof out, big_endian, v))
        {
            return false;
        }
        out = static_cast<T>(v);
        return true;
    }

    const std::uint8_t* _data;
    std::size_t _size;
    std::size_t _pos = 0;
};

}  // namespace vsthost
