#include "lumo/lv2/Lv2Urids.h"

#include "lumo/lv2/Lv2LearnKeys.h"
#include "lumo/lv2/Lv2StateKeys.h"

#include <lv2/atom/atom.h>
#include <lv2/log/log.h>
#include <lv2/midi/midi.h>
#include <lv2/time/time.h>
#include <lv2/urid/urid.h>

namespace lumo
{

void Lv2Urids::map_all(const LV2_URID_Map* map, const std::string& plugin_uri)
{
    if (map == nullptr || map->map == nullptr)
    {
        *this = Lv2Urids{};
        return;
    }
    const auto id = [map](const std::string& uri) { return map->map(map->handle, uri.c_str()); };
    atom_sequence = id(LV2_ATOM__Sequence);
    atom_object = id(LV2_ATOM__Object);
    atom_blank = id(LV2_ATOM__Blank);
    atom_chunk = id(LV2_ATOM__Chunk);
    atom_float = id(LV2_ATOM__Float);
    atom_double = id(LV2_ATOM__Double);
    atom_int = id(LV2_ATOM__Int);
    atom_long = id(LV2_ATOM__Long);
    atom_frame_time = id(LV2_ATOM__frameTime);
    midi_event = id(LV2_MIDI__MidiEvent);
    time_position = id(LV2_TIME__Position);
    time_bpm = id(LV2_TIME__beatsPerMinute);
    log_error = id(LV2_LOG__Error);
    log_warning = id(LV2_LOG__Warning);
    state_program = id(plugin_uri + lv2_state_key::program);
    state_bindings = id(plugin_uri + lv2_state_key::midi_bindings);
    atom_event_transfer = id(LV2_ATOM__eventTransfer);
    learn_start = id(plugin_uri + lv2_learn_key::learn_start);
    learn_cancel = id(plugin_uri + lv2_learn_key::learn_cancel);
    learn_forget = id(plugin_uri + lv2_learn_key::learn_forget);
    bindings_get = id(plugin_uri + lv2_learn_key::bindings_get);
    bindings = id(plugin_uri + lv2_learn_key::bindings);
    learn_parameter = id(plugin_uri + lv2_learn_key::parameter);
    pending_learn = id(plugin_uri + lv2_learn_key::pending_learn);
    learn_count = id(plugin_uri + lv2_learn_key::learn_count);
}

}  // namespace lumo
