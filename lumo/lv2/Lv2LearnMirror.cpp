#include "lumo/lv2/Lv2LearnMirror.h"

#include "lumo/lv2/Lv2BindingRecord.h"

namespace lumo
{

bool Lv2LearnMirror::take(const Lv2AtomObject& object, const Lv2Urids& urids)
{
    Lv2LearnMessage::Bindings bindings;
    if (!Lv2LearnMessage::read_bindings(object, urids, bindings))
    {
        return false;
    }
    Lv2BindingRecord::apply(bindings.ids, _mgr);
    _mgr.set_pending_learn(bindings.pending_learn);
    _mgr.set_learn_count(bindings.learn_count);
    _pending = bindings.pending_learn;
    _ids.swap(bindings.ids);
    return true;
}

void Lv2LearnMirror::send_changes(const Send& send)
{
    const int pending = _mgr.get_pending_learn();
    if (pending != _pending)
    {
        if (pending >= 0)
        {
            send(Lv2LearnMessage::Request::start, pending);
        }
        else
        {
            send(Lv2LearnMessage::Request::cancel, _pending);
        }
        _pending = pending;
    }
    for (std::size_t i = 0; i < _ids.size(); ++i)
    {
        if (_ids[i] != Lv2BindingRecord::no_id && _mgr.get_id(static_cast<int>(i)) == Lv2BindingRecord::no_id)
        {
            send(Lv2LearnMessage::Request::forget, static_cast<int>(i));
            _ids[i] = Lv2BindingRecord::no_id;
        }
    }
}

}  // namespace lumo
