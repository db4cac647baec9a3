#include "lumo/lv2/Lv2SequenceReader.h"

#include "lumo/lv2/Lv2Urids.h"

#include <lv2/atom/atom.h>

#include <algorithm>
#include <cstring>

namespace lumo
{
namespace
{

constexpr std::size_t event_header = sizeof(LV2_Atom_Event);

std::uint64_t padded(std::uint64_t size)
{
    return (size + 7u) & ~std::uint64_t{7};
}

}  // namespace

Lv2SequenceReader::Lv2SequenceReader(const LV2_Atom_Sequence* sequence, std::uint32_t frames, const Lv2Urids& urids)
    // A run of no frames is how hosts hand over events while the transport
    // stands: its events count as happening at frame 0.
    : _limit(std::max<std::int64_t>(frames, 1))
{
    if (sequence == nullptr || !urids.is_mapped())
    {
        return;
    }
    LV2_Atom_Sequence head;
    std::memcpy(&head, sequence, sizeof(head));
    if (head.atom.type != urids.atom_sequence || head.atom.size < sizeof(LV2_Atom_Sequence_Body))
    {
        return;
    }
    // Time stamps in beats cannot be placed in a block of frames.
    if (head.body.unit != 0 && head.body.unit != urids.atom_frame_time)
    {
        return;
    }
    const auto* base = reinterpret_cast<const std::uint8_t*>(sequence);
    _pos = base + sizeof(LV2_Atom_Sequence);
    _end = base + sizeof(LV2_Atom) + head.atom.size;
}

bool Lv2SequenceReader::next(Lv2Event& event)
{
    while (_pos != nullptr && static_cast<std::size_t>(_end - _pos) >= event_header)
    {
        LV2_Atom_Event header;
        std::memcpy(&header, _pos, event_header);
        const auto room = static_cast<std::uint64_t>(_end - _pos) - event_header;
        if (header.body.size > room)
        {
            break;
        }
        const std::uint8_t* body = _pos + event_header;
        _pos += std::min<std::uint64_t>(padded(event_header + header.body.size), room + event_header);
        const std::int64_t frame = header.time.frames;
        if (frame < _last_frame || frame >= _limit)
        {
            continue;
        }
        _last_frame = frame;
        event.frame = static_cast<std::uint32_t>(frame);
        event.type = header.body.type;
        event.size = header.body.size;
        event.body = body;
        return true;
    }
    _pos = nullptr;
    return false;
}

}  // namespace lumo
