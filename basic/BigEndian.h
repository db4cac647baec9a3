#pragma once

#include <cstdint>
#include <cstring>

namespace basic
{

// Big-endian fields of the stored records, independent of the machine's order.

inline std::uint16_t get_be16(const std::uint8_t* p)
{
    return static_cast<std::uint16_t>((p[0] << 8) | p[1]);
}

inline std::uint32_t get_be32(const std::uint8_t* p)
{
    return (std::uint32_t{p[0]} << 24) | (std::uint32_t{p[1]} << 16) | (std::uint32_t{p[2]} << 8) | p[3];
}

inline float get_be_float(const std::uint8_t* p)
{
    const std::uint32_t bits = get_be32(p);
    float value;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

inline void set_be16(std::uint8_t* p, std::uint16_t value)
{
    p[0] = static_cast<std::uint8_t>(value >> 8);
    p[1] = static_cast<std::uint8_t>(value);
}

inline void set_be32(std::uint8_t* p, std::uint32_t value)
{
    p[0] = static_cast<std::uint8_t>(value >> 24);
    p[1] = static_cast<std::uint8_t>(value >> 16);
    p[2] = static_cast<std::uint8_t>(value >> 8);
    p[3] = static_cast<std::uint8_t>(value);
}

inline void set_be_float(std::uint8_t* p, float value)
{
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof(bits));
    set_be32(p, bits);
}

}  // namespace basic
