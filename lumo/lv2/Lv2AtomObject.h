#pragma once

#include "lumo/lv2/Lv2Event.h"

#include <cstdint>

namespace lumo
{

struct Lv2Urids;

// An atom object in the host's bytes (an event's body), read without trusting
// its sizes: a property that does not fit ends the search. Allocates nothing.
class Lv2AtomObject
{
public:
    // Anything but an object (or a blank node, its older name) has no
    // properties and no type.
    Lv2AtomObject(const Lv2Event& event, const Lv2Urids& urids);

    bool is_a(std::uint32_t object_type) const { return _body != nullptr && _type == object_type; }
    // The value of the first property key that holds a number (float,
    // double, int or long); false when there is none.
    bool find_number(std::uint32_t key, double& value) const;
    // The bytes of the first property key that holds an atom:Chunk; they
    // stay in the host's buffer.
    bool find_chunk(std::uint32_t key, const std::uint8_t*& data, std::uint32_t& size) const;

private:
    // The first property key whose value take() accepts (its type, body and size).
    template <class Take>
    bool find(std::uint32_t key, Take take) const;
    bool read_number(std::uint32_t type, const std::uint8_t* body, std::uint32_t size, double& value) const;

    const Lv2Urids& _urids;
    const std::uint8_t* _body = nullptr;
    std::uint32_t _size = 0;
    std::uint32_t _type = 0;
};

}  // namespace lumo
