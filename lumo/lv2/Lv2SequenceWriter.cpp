#include "lumo/lv2/Lv2SequenceWriter.h"

#include <lv2/atom/atom.h>

#include <cstring>

namespace lumo
{
namespace
{

std::uint64_t event_bytes(std::uint32_t size)
{
    return (sizeof(LV2_Atom_Event) + std::uint64_t{size} + 7u) & ~std::uint64_t{7};
}

}  // namespace

Lv2SequenceWriter::Lv2SequenceWriter(LV2_Atom_Sequence* sequence, std::uint32_t sequence_type)
{
    if (sequence == nullptr)
    {
        return;
    }
    // A buffer too small for even an empty sequence can only be left as an
    // empty atom of no type.
    _capacity = sequence->atom.size;
    if (_capacity < sizeof(LV2_Atom_Sequence_Body) || sequence_type == 0)
    {
        sequence->atom.size = 0;
        sequence->atom.type = 0;
        _capacity = 0;
        return;
    }
    _sequence = sequence;
    _sequence->atom.type = sequence_type;
    _sequence->atom.size = sizeof(LV2_Atom_Sequence_Body);
    _sequence->body.unit = 0;
    _sequence->body.pad = 0;
    _used = sizeof(LV2_Atom_Sequence_Body);
}

bool Lv2SequenceWriter::has_room(std::uint32_t size) const
{
    return _sequence != nullptr && _used + event_bytes(size) <= _capacity;
}

bool Lv2SequenceWriter::append(std::uint32_t frame, std::uint32_t type, const void* body, std::uint32_t size)
{
    if (!has_room(size))
    {
        return false;
    }
    auto* at = reinterpret_cast<std::uint8_t*>(_sequence) + sizeof(LV2_Atom) + _used;
    LV2_Atom_Event header{};
    header.time.frames = frame;
    header.body.size = size;
    header.body.type = type;
    const std::uint64_t bytes = event_bytes(size);
    std::memset(at, 0, bytes);
    std::memcpy(at, &header, sizeof(header));
    std::memcpy(at + sizeof(header), body, size);
    _used += bytes;
    _sequence->atom.size = static_cast<std::uint32_t>(_used);
    return true;
}

}  // namespace lumo
