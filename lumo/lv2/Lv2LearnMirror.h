#pragma once

#include "lumo/lv2/Lv2LearnMessage.h"
#include "lumo/midi/MidiMgr.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace lumo
{

class Lv2AtomObject;
struct Lv2Urids;

// The editor's end of the MIDI learn conversation (Lv2LearnMessage). The
// editor's learn menu and markers work on a MIDI manager; here that manager
// mirrors the audio side's (its bindings, pending learn and learn count, as
// the audio side last reported them), and what the editor does to it (arm,
// disarm, forget) goes back to the audio side as requests. The audio side's
// next report then settles the mirror.
class Lv2LearnMirror
{
public:
    using Send = std::function<void(Lv2LearnMessage::Request request, int param)>;

    MidiMgr& use_mgr() { return _mgr; }

    // The audio side's report: the mirror becomes what it says. False, and
    // nothing changed, for anything else.
    bool take(const Lv2AtomObject& object, const Lv2Urids& urids);
    // Requests for what the editor changed on the mirror since the last
    // report or call.
    void send_changes(const Send& send);

private:
    MidiMgr _mgr;
    // What the audio side holds as far as this end knows: its last report
    // and the requests sent since.
    int _pending = -1;
    std::vector<std::int32_t> _ids;
};

}  // namespace lumo
