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
    // Maps every URI; keys of the plug-in's state and of its messages live
    // below its own URI.
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
    // The editor's port writes and notifications of atoms.
    std::uint32_t atom_event_transfer = 0;
    // The MIDI learn conversation with the editor (Lv2LearnKeys).
    std::uint32_t learn_start = 0;
    std::uint32_t learn_cancel = 0;
    std::uint32_t learn_forget = 0;
    std::uint32_t bindings_get = 0;
    std::uint32_t bindings = 0;
    std::uint32_t learn_parameter = 0;
    std::uint32_t pending_learn = 0;
    std::uint32_t learn_count = 0;
};

}  // namespace lumo
