#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vsthost
{

// Appends numbers in either byte order to a growing buffer.
class ByteWriter
{
public:
    void put_u32_be(std::uint32_t v) { put(v, 4, true); }
    void put_i32_be(std::int32_t v) { put(static_cast<std::uint32_t>(v), 4, true); }
    void put_float_be(float v);
    void put_u32_le(std::uint32_t v) { put(v, 4, false); }
    void put_u16_le(std::uint16_t v) { put(v, 2, false); }
    void put_u16_be(std::uint16_t v) { put(v, 2, true); }
    void put_u8(std::uint8_t v) { _bytes.push_back(v); }
    void put_bytes(const std::uint8_t* data, std::size_t n) { _bytes.insert(_bytes.end(), data, data + n); }
    // Writes v over four bytes already written, at offset.
    void patch_u32_be(std::size_t offset, std::uint32_t v);

    std::vector<std::uint8_t>& use_bytes() { return _bytes; }

private:
    void put(std::uint32_t v, std::size_t n, bool big_endian);

    std::vector<std::uint8_t> _bytes;
};

}  // namespace vsthost
