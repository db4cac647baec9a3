#pragma once

#include "gadu/Menu.h"
#include "gadu/MenuActionInterface.h"

#include <cstdint>
#include <string>

namespace gadu
{
class MenuItem;
}

namespace lumo
{
class MidiMgr;
}

namespace zarquette
{

class MidiLearn;

// The pop-up menu of a control's right button: learn a MIDI controller for
// the control's parameter, forget it, and (greyed, for reading only) the
// controller that drives it now. It is built once and filled in for the
// parameter each time it pops up, so that showing it allocates no entries.
class MidiLearnMenu : public gadu::Menu, public gadu::MenuActionInterface
{
public:
    explicit MidiLearnMenu(MidiLearn& learn);

    // Fills the entries in for the parameter from the manager's map and
    // pending learn; the choices then act on that manager and parameter.
    void prepare(lumo::MidiMgr& mgr, int param_index);
    int get_param() const { return _param; }

    // What the user reads for a controller id: "CC 74", "RPN 3", "NRPN 2",
    // or "No MIDI controller" for a parameter without one.
    static std::string describe(std::int32_t id);

    // Learning arms the manager for the parameter (choosing it again while it
    // waits disarms it); forgetting disarms the parameter and unbinds it.
    // Both go through the learn follower, which shows their outcome.
    void on_chosen(gadu::MenuItem& item) override;

    const gadu::MenuItem& use_learn_item() const { return _learn; }
    const gadu::MenuItem& use_forget_item() const { return _forget; }
    const gadu::MenuItem& use_binding_item() const { return _binding; }

private:
    MidiLearn& _follower;
    gadu::MenuItem& _learn;
    gadu::MenuItem& _forget;
    gadu::MenuItem& _binding;
    lumo::MidiMgr* _mgr = nullptr;
    int _param = -1;
};

}  // namespace zarquette
