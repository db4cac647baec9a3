#include "zarquette/gui/MidiLearn.h"

#include "gadu/TimerMessage.h"
#include "lumo/GuiInterface.h"
#include "lumo/HostGuiInterface.h"
#include "lumo/midi/MidiMgr.h"
#include "zarquette/gui/ParamInbox.h"

#include <cmath>

namespace zarquette
{

void MidiLearn::set_up(int nbr_params)
{
    _shown.assign(static_cast<std::size_t>(nbr_params > 0 ? nbr_params : 0), -1);
}

void MidiLearn::toggle(lumo::MidiMgr& mgr, int index)
{
    if (mgr.get_pending_learn() == index)
    {
        mgr.set_pending_learn(-1);
        return;
    }
    // The count first: a controller that arrives right after the arming
    // must count as the learn's.
    _armed = index;
    _armed_count = mgr.get_learn_count();
    mgr.set_pending_learn(index);
}

void MidiLearn::forget(lumo::MidiMgr& mgr, int index)
{
    // Disarmed first, so that a controller arriving meanwhile cannot bind the
    // parameter again behind the user's back.
    if (mgr.get_pending_learn() == index)
    {
        mgr.set_pending_learn(-1);
    }
    mgr.unbind(index);
}

// Armed by someone else than this editor (no count to compare with), a
// parameter waits until it has a controller.
std::int32_t MidiLearn::get_state(const lumo::MidiMgr& mgr, int index) const
{
    const std::int32_t id = mgr.get_id(index);
    const bool has_id = id >= 0;
    if (mgr.get_pending_learn() == index)
    {
        const bool learnt = index == _armed ? mgr.get_learn_count() != _armed_count : has_id;
        if (!learnt)
        {
            return waiting;
        }
    }
    if (!has_id)
    {
        return unbound;
    }
    return id == lumo::MidiMgr::make_id(lumo::MidiMgr::nrpn_selector, index) ? bound_by_default : bound;
}

void MidiLearn::poll(const lumo::MidiMgr& mgr, double now)
{
    const bool lit = std::fmod(now, blink_period) < blink_lit;
    const bool turned = lit != _blink_lit;
    _blink_lit = lit;
    for (std::size_t i = 0; i < _shown.size(); ++i)
    {
        const std::int32_t state = get_state(mgr, static_cast<int>(i));
        if (state != _shown[i] || (turned && state == waiting))
        {
            _shown[i] = state;
            _editor.midi_learn_changed(static_cast<int>(i), state);
        }
    }
}

void MidiLearn::forget_shown()
{
    _shown.assign(_shown.size(), -1);
}

std::int32_t MidiLearn::handle_message(const gadu::MessageInterface& message)
{
    const auto* notify = dynamic_cast<const gadu::Notify*>(&message);
    if (notify == nullptr)
    {
        return 0;
    }
    lumo::HostGuiInterface* host = _editor.use_host();
    if (const lumo::MidiMgr* mgr = host != nullptr ? host->use_midi_mgr() : nullptr)
    {
        poll(*mgr, notify->get_time());
    }
    _inbox.take();
    return 1;
}

}  // namespace zarquette
