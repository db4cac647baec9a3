#include "lumo/lv2/Lv2LearnLink.h"

#include "lumo/lv2/Lv2LearnMessage.h"
#include "lumo/lv2/Lv2SequenceWriter.h"
#include "lumo/lv2/Lv2Urids.h"
#include "lumo/midi/MidiMgr.h"

namespace lumo
{

Lv2LearnLink::Lv2LearnLink(const Lv2Urids& urids, const LV2_URID_Map* map) : _urids(urids)
{
    if (map != nullptr && map->map != nullptr)
    {
        // The forge only asks the map for its atom types, here on the host's thread.
        lv2_atom_forge_init(&_forge, const_cast<LV2_URID_Map*>(map));
        _has_forge = true;
    }
}

bool Lv2LearnLink::take(const Lv2AtomObject& object, MidiMgr& mgr)
{
    Lv2LearnMessage::Request request = Lv2LearnMessage::Request::get_bindings;
    int param = -1;
    if (!Lv2LearnMessage::read_request(object, _urids, request, param))
    {
        return false;
    }
    switch (request)
    {
    case Lv2LearnMessage::Request::start:
        mgr.set_pending_learn(param);
        break;
    case Lv2LearnMessage::Request::cancel:
        if (mgr.get_pending_learn() == param)
        {
            mgr.set_pending_learn(-1);
        }
        break;
    case Lv2LearnMessage::Request::forget:
        // Disarmed first, so that a controller in this very block cannot
        // bind the parameter again.
        if (mgr.get_pending_learn() == param)
        {
            mgr.set_pending_learn(-1);
        }
        mgr.unbind(param);
        break;
    case Lv2LearnMessage::Request::get_bindings:
        _editor_asked = true;
        break;
    }
    bindings_changed();
    return true;
}

void Lv2LearnLink::report(const MidiMgr& mgr, Lv2SequenceWriter& notify)
{
    if (!_has_forge || !_editor_asked)
    {
        return;
    }
    const int pending = mgr.get_pending_learn();
    const std::uint32_t count = mgr.get_learn_count();
    // Taken before the report is written: a change made meanwhile is told next time.
    const bool changed = _changed.exchange(false, std::memory_order_acq_rel);
    if (!changed && pending == _sent_pending && count == _sent_count)
    {
        return;
    }
    lv2_atom_forge_set_buffer(&_forge, _message.data(), _message.size());
    const auto* atom = reinterpret_cast<const LV2_Atom*>(_message.data());
    if (!Lv2LearnMessage::write_bindings(_forge, _urids, mgr) || !notify.append(0, atom->type, atom + 1, atom->size))
    {
        bindings_changed();
        return;
    }
    _sent_pending = pending;
    _sent_count = count;
}

}  // namespace lumo
