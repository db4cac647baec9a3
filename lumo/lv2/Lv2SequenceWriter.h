#pragma once

#include <lv2/atom/atom.h>

#include <cstdint>

namespace lumo
{

// Fills the host's output sequence for one block. The host announces the
// buffer's room in the atom's size before the block; the writer starts an
// empty sequence there and appends events while they fit. Allocates nothing.
class Lv2SequenceWriter
{
public:
    // sequence may be null (the port is not connected): nothing is written
    // and nothing fits.
    Lv2SequenceWriter(LV2_Atom_Sequence* sequence, std::uint32_t sequence_type);

    // Whether the host gave a buffer that holds a sequence.
    bool is_open() const { return _sequence != nullptr; }
    // Whether an event with a body of size bytes still fits.
    bool has_room(std::uint32_t size) const;
    // Appends one event; false (and nothing written) when it does not fit.
    // Frames must not decrease from one event to the next.
    bool append(std::uint32_t frame, std::uint32_t type, const void* body, std::uint32_t size);

private:
    LV2_Atom_Sequence* _sequence = nullptr;
    std::uint64_t _capacity = 0;  // bytes after the atom header
    std::uint64_t _used = 0;
};

}  // namespace lumo
