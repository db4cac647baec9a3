#pragma once

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
    static constexpr std::int32_t no_id = -1;

    // The map as it stands: every index up to the last bound one.
    static std::vector<std::uint8_t> write(const MidiMgr& mgr);
    // Checks a whole record before anything is used: false, and ids left
    // alone, for a size other than its count gives, a count beyond what the
    // map holds, an id no MIDI message makes, or one controller given to two
    // indexes.
    static bool read(const std::uint8_t* data, std::size_t size, std::vector<std::int32_t>& ids);
    // Makes the map exactly ids: indexes beyond them lose their controller.
    static void apply(const std::vector<std::int32_t>& ids, MidiMgr& mgr);
};

}  // namespace lumo
