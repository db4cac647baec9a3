#pragma once

#include "gadu/MessageHandlerInterface.h"

#include <cstdint>
#include <vector>

namespace lumo
{
class GuiInterface;
class MidiMgr;
}  // namespace lumo

namespace zarquette
{

class ParamInbox;

// Follows the MIDI manager's learn for the editor. A learn completes on the
// audio thread, which must not call into the editor; so the editor's timer
// reads the manager's map and pending learn (single atomic words, no lock)
// and reports each parameter's learn state that changed through the
// editor's midi_learn_changed, on the editor's own thread. The same timer
// then empties the parameter inbox, so a state reported here reaches its
// control at this very tick.
class MidiLearn : public gadu::MessageHandlerInterface
{
public:
    // The learn states the editor's controls keep (-1 until one is known).
    static constexpr std::int32_t unbound = 0;
    static constexpr std::int32_t waiting = 1;
    static constexpr std::int32_t bound = 2;
    // Bound to the NRPN of its own index, as the effect binds every parameter
    // from the start: true, but nothing the user did, so nothing to point out.
    static constexpr std::int32_t bound_by_default = 3;
    // A waiting control blinks with this period, lit for the first part.
    static constexpr double blink_period = 0.6;
    static constexpr double blink_lit = 0.4;

    MidiLearn(lumo::GuiInterface& editor, ParamInbox& inbox) : _editor(editor), _inbox(inbox) {}

    // The editor's thread, before the first poll.
    void set_up(int nbr_params);

    // The next controller binds the parameter. Choosing a parameter that
    // waits already cancels its learn, as a second click on an armed button.
    void toggle(lumo::MidiMgr& mgr, int index);
    // Cancels the parameter's learn and unbinds its controller.
    void forget(lumo::MidiMgr& mgr, int index);

    std::int32_t get_state(const lumo::MidiMgr& mgr, int index) const;
    // Reports the states that changed since the last poll; every state after
    // a forget_shown. A waiting state is reported again when the blink turns.
    void poll(const lumo::MidiMgr& mgr, double now);
    // The next poll reports every state (the controls were not told yet).
    void forget_shown();
    bool is_blink_lit() const { return _blink_lit; }

    // The window's timer: poll the host's manager, then empty the inbox.
    std::int32_t handle_message(const gadu::MessageInterface& message) override;

private:
    lumo::GuiInterface& _editor;
    ParamInbox& _inbox;
    std::vector<std::int32_t> _shown;
    int _armed = -1;
    std::uint32_t _armed_count = 0;
    bool _blink_lit = true;
};

}  // namespace zarquette
