#pragma once

#include "lumo/midi/MidiControlMap.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace lumo
{

class MidiMgr;

// The MIDI controller of every parameter, as the plug-in's state keeps it:
// the control map whole, the default NRPNs, the settings file's bindings and
// whatever was learned since.
//
// Record (big-endian):
//     0   count n                    4 bytes
//     4   controller id of index i   4 bytes each, n of them; -1 for none
class Lv2BindingRecord
{
public:
    static constexpr std::size_t header_size = 4;
    static constexpr std::size_t id_size = 4;
    static constexpr std::int32_t no_id = -1;
    // The longest record: every index the map can hold.
    static constexpr std::size_t max_size = header_size + id_size * MidiControlMap::capacity;

    // The map as it stands: every index up to the last bound one.
    static std::vector<std::uint8_t> write(const MidiMgr& mgr);
    // The same into out, which holds max_size bytes; the record's size.
    // Allocates nothing (the audio thread tells the editor this way).
    static std::size_t write_to(const MidiMgr& mgr, std::uint8_t* out);
    // Checks a whole record before anything is used: false, and ids left
    // alone, for a size other than its count gives, a count beyond what the
    // map holds, an id no MIDI message makes, or one controller given to two
    // indexes.
    static bool read(const std::uint8_t* data, std::size_t size, std::vector<std::int32_t>& ids);
    // Makes the map exactly ids: indexes beyond them lose their controller.
    static void apply(const std::vector<std::int32_t>& ids, MidiMgr& mgr);
};

}  // namespace lumo
