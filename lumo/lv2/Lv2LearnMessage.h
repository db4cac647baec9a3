#pragma once

#include <lv2/atom/forge.h>

#include <cstdint>
#include <vector>

namespace lumo
{

class Lv2AtomObject;
class MidiMgr;
struct Lv2Urids;

// The MIDI learn conversation between the editor and the audio side, which
// in LV2 reach each other only through ports: atom objects whose types and
// keys hang below the plug-in's URI (Lv2LearnKeys).
//
//   editor to audio side, on the control port:
//       LearnStart, LearnCancel, LearnForget   parameter: Int
//       BindingsGet
//   audio side to editor, on the notify port:
//       Bindings   pendingLearn: Int (-1 for none), learnCount: Int,
//                  midi_bindings: Chunk (an Lv2BindingRecord, the state's bytes)
class Lv2LearnMessage
{
public:
    enum class Request
    {
        start,
        cancel,
        forget,
        get_bindings
    };

    struct Bindings
    {
        int pending_learn = -1;
        std::uint32_t learn_count = 0;
        std::vector<std::int32_t> ids;
    };

    // Each false when the forge's buffer is too small. Allocates nothing.
    static bool write_request(LV2_Atom_Forge& forge, const Lv2Urids& urids, Request request, int param);
    static bool write_bindings(LV2_Atom_Forge& forge, const Lv2Urids& urids, const MidiMgr& mgr);

    // False for any other object, and for a request or a report whose
    // numbers no plug-in sends (a parameter index beyond what a control map
    // holds, a pending learn below -1, a record that does not read).
    static bool read_request(const Lv2AtomObject& object, const Lv2Urids& urids, Request& request, int& param);
    static bool read_bindings(const Lv2AtomObject& object, const Lv2Urids& urids, Bindings& bindings);
};

}  // namespace lumo
