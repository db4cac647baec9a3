#pragma once

#include "lumo/lv2/Lv2Event.h"

#include <lv2/atom/atom.h>

#include <cstdint>

namespace lumo
{

struct Lv2Urids;

// Walks the host's input sequence for one block and hands out only events a
// block can use. The host's buffer is read as untrusted bytes: an event that
// does not fit the sequence ends the walk; events before the previous one,
// at or beyond the end of the block are skipped. Allocates nothing.
class Lv2SequenceReader
{
public:
    // sequence may be null (the port is not connected) and yields nothing, as
    // does anything that is not a sequence timed in audio frames.
    Lv2SequenceReader(const LV2_Atom_Sequence* sequence, std::uint32_t frames, const Lv2Urids& urids);

    // The next usable event, at a frame no earlier than the one before and
    // within the block; false at the end.
    bool next(Lv2Event& event);

private:
    const std::uint8_t* _pos = nullptr;
    const std::uint8_t* _end = nullptr;
    std::int64_t _limit = 0;
    std::int64_t _last_frame = 0;
};

}  // namespace lumo
