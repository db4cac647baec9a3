#include "ByteWriter.h"

#include <cstring>

namespace vsthost
{

void ByteWriter::put_float_be(float v)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &v, sizeof bits);
    put_u32_be(bits);
}

void ByteWriter::patch_u32_be(std::size_t offset, std::uint32_t v)
{
    for (std::size_t i = 0; i < 4; ++i)
    {
        _bytes[offset + i] = static_cast<std::uint8_t>(v >> (8 * (3 - i)));
    }
}

void ByteWriter::put(std::uint32_t v, std::size_t n, bool big_endian)
{
    for (std::size_t i = 0; i < n; ++i)
    {
        const std::size_t shift = big_endian ? 8 * (n - 1 - i) : 8 * i;
        _bytes.push_back(static_cast<std::uint8_t>(v >> shift));
    }
}

}  // namespace vsthost
