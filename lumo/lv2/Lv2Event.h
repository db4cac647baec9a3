#pragma once

#include <cstdint>

namespace lumo
{

// One event of the host's input sequence, checked against the block and the
// sequence it came in: body holds size bytes of an atom of type type.
struct Lv2Event
{
    std::uint32_t frame = 0;
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    const std::uint8_t* body = nullptr;
};

}  // namespace lumo
