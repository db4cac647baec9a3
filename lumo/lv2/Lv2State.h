#pragma once

#include "lumo/ProgramSlot.h"

#include <lv2/state/state.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumo
{

class Lv2Log;
class MidiMgr;
struct Lv2Urids;

// The plug-in's state in the host's store: the current program (the record
// of a VST 2 program chunk) and the MIDI bindings (Lv2BindingRecord), each an
// atom:Chunk of big-endian bytes, so a saved state reads the same on every
// machine. A restore checks everything before anything changes.
class Lv2State
{
public:
    // What a restore found and accepted; a property the store lacks stays empty.
    struct Found
    {
        std::optional<ProgramSlot> program;
        std::optional<std::vector<std::int32_t>> bindings;
    };

    Lv2State(const Lv2Urids& urids, const Lv2Log& log, std::string plugin_name);

    // mgr may be null (a plug-in without MIDI keeps no bindings).
    LV2_State_Status save(LV2_State_Store_Function store, LV2_State_Handle handle, const ProgramSlot& program,
                          const MidiMgr* mgr) const;
    // shape: the program the plug-in holds now; a saved program must have as
    // many values and extra bytes. A value of another type, size or shape is
    // refused with an error status, reported through the log, and found is
    // then left empty.
    LV2_State_Status restore(LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle,
                             const ProgramSlot& shape, Found& found) const;

private:
    // The chunk stored under key, or null when there is none (status stays
    // success) or it is not a chunk (status set).
    const std::uint8_t* retrieve_chunk(LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle,
                                       std::uint32_t key, const char* what, std::size_t& size,
                                       LV2_State_Status& status) const;
    LV2_State_Status refuse(const char* what, const char* why) const;

    const Lv2Urids& _urids;
    const Lv2Log& _log;
    std::string _plugin_name;
};

}  // namespace lumo
