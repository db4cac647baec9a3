#include "zarquette/gui/MidiLearnMenu.h"

#include "gadu/MenuDelimiter.h"
#include "gadu/MenuItem.h"
#include "lumo/midi/MidiMgr.h"
#include "zarquette/gui/MidiLearn.h"

#include <memory>

namespace zarquette
{

MidiLearnMenu::MidiLearnMenu(MidiLearn& learn)
    : _follower(learn),
      _learn(use_root().add(std::make_unique<gadu::MenuItem>("Learn MIDI controller", this))),
      _forget(use_root().add(std::make_unique<gadu::MenuItem>("Forget MIDI controller", this))),
      _binding((use_root().add(std::make_unique<gadu::MenuDelimiter>()),
                use_root().add(std::make_unique<gadu::MenuItem>(describe(-1)))))
{
    _binding.set_disabled(true);
}

void MidiLearnMenu::prepare(lumo::MidiMgr& mgr, int param_index)
{
    _mgr = &mgr;
    _param = param_index;
    const std::int32_t id = mgr.get_id(param_index);
    _learn.set_checked(mgr.get_pending_learn() == param_index);
    _forget.set_disabled(id < 0 && !_learn.is_checked());
    _binding.set_label(describe(id));
}

std::string MidiLearnMenu::describe(std::int32_t id)
{
    if (id < 0)
    {
        return "No MIDI controller";
    }
    const std::int32_t selector = id / 65536;
    const std::int32_t number = id % 65536;
    if (selector == lumo::MidiMgr::nrpn_selector)
    {
        return "NRPN " + std::to_string(number);
    }
    if (selector == lumo::MidiMgr::rpn_selector)
    {
        return "RPN " + std::to_string(number);
    }
    return "CC " + std::to_string(selector);
}

void MidiLearnMenu::on_chosen(gadu::MenuItem& item)
{
    if (_mgr == nullptr)
    {
        return;
    }
    if (&item == &_learn)
    {
        _follower.toggle(*_mgr, _param);
    }
    else if (&item == &_forget)
    {
        _follower.forget(*_mgr, _param);
    }
}

}  // namespace zarquette
