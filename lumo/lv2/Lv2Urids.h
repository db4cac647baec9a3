#pragma once

#include <lv2/urid/urid.h>

#include <cstdint>
#include <string>

namespace lumo
{

// The URIDs the adapter compares and writes, mapped once when the plug-in is
// created. Without the host's map every field stays 0, a value no host hands
// out: nothing the host sends matches, and the atom ports are left alone.
struct Lv2Urids
{
    // Maps every URI; keys of the plug-in's state live below its own URI.
    void map_all(const LV2_URID_Map* map, const std::string& plugin_uri);
    bool is_mapped() const { return atom_sequence != 0; }

    std::uint32_t atom_sequence = 0;
    std::uint32_t atom_object = 0;
    std::uint32_t atom_blank = 0;
    std::uint32_t atom_chunk = 0;
    std::uint32_t atom_float = 0;
    std::uint32_t atom_double = 0;
    std::uint32_t atom_int = 0;
    std::uint32_t atom_long = 0;
    std::uint32_t atom_frame_time = 0;
    std::uint32_t midi_event = 0;
    std::uint32_t time_position = 0;
    std::uint32_t time_bpm = 0;
    std::uint32_t log_error = 0;
    std::uint32_t log_warning = 0;
    std::uint32_t state_program = 0;
    std::uint32_t state_bindings = 0;
};

}  // namespace lumo
