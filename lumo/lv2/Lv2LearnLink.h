#pragma once

#include <lv2/atom/forge.h>
#include <lv2/urid/urid.h>

#include <array>
#include <atomic>
#include <cstdint>

namespace lumo
{

class Lv2AtomObject;
class Lv2SequenceWriter;
class MidiMgr;
struct Lv2Urids;

// The audio side's end of the MIDI learn conversation with the editor
// (Lv2LearnMessage): carries out the editor's requests and, once an editor
// has asked for the bindings, tells it again whenever they change (a learn,
// a forget, a restored state). Allocates nothing on the audio thread.
class Lv2LearnLink
{
public:
    // Without the host's map there is no conversation.
    Lv2LearnLink(const Lv2Urids& urids, const LV2_URID_Map* map);

    // Audio thread: true when object was one of the editor's requests.
    bool take(const Lv2AtomObject& object, MidiMgr& mgr);
    // Any thread: the bindings changed by other means than a learn.
    void bindings_changed() { _changed.store(true, std::memory_order_release); }
    // Audio thread, once a block: the bindings, when the editor should hear
    // of them and they fit; otherwise they wait for a later block.
    void report(const MidiMgr& mgr, Lv2SequenceWriter& notify);

private:
    // Room for a report of the largest map.
    static constexpr std::size_t message_capacity = 2048;

    const Lv2Urids& _urids;
    LV2_Atom_Forge _forge{};
    bool _has_forge = false;
    bool _editor_asked = false;
    std::atomic<bool> _changed{false};
    int _sent_pending = -1;
    std::uint32_t _sent_count = 0;
    alignas(8) std::array<std::uint8_t, message_capacity> _message{};
};

}  // namespace lumo
