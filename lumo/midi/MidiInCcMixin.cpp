#include "lumo/midi/MidiInCcMixin.h"

#include "lumo/DspInterface.h"
#include "lumo/ParamPriority.h"
#include "lumo/PluginCmdInterface.h"
#include "lumo/midi/MidiMgr.h"
#include "lumo/midi/MidiReceiverInterface.h"

namespace lumo
{
namespace
{

enum Controller
{
    data_entry_msb = 6,
    data_entry_lsb = 38,
    nrpn_lsb = 98,
    nrpn_msb = 99,
    rpn_lsb = 100,
    rpn_msb = 101
};

}  // namespace

int MidiInCcMixin::get_nrpn_compatibility() const
{
    const MidiMgr* mgr = use_midi_mgr();
    return mgr != nullptr ? mgr->get_nrpn_compatibility() : 1;
}

void MidiInCcMixin::handle_controller(MidiChannelState& state, int controller, int value)
{
    MidiReceiverInterface* receiver = state.use_receiver();
    const int channel = state.get_channel();
    const bool standard = get_nrpn_compatibility() != 0;
    switch (controller)
    {
    case rpn_msb:
    case rpn_lsb:
        state.select_rpn_bits((controller == rpn_msb) == standard, value);
        break;
    case nrpn_msb:
    case nrpn_lsb:
        state.select_nrpn_bits((controller == nrpn_msb) == standard, value);
        break;
    case data_entry_msb:
    case data_entry_lsb:
    {
        const std::int32_t entered = state.enter_data(controller == data_entry_msb, value);
        const bool nrpn = state.get_selected_kind() == MidiChannelState::Kind::nrpn;
        const std::int32_t number = nrpn ? state.get_nrpn_number() : state.get_rpn_number();
        if (receiver != nullptr)
        {
            if (nrpn)
            {
                receiver->nrpn_change(channel, number, entered);
            }
            else
            {
                receiver->rpn_change(channel, number, entered);
            }
        }
        on_controller(((nrpn ? nrpn_selector : rpn_selector) << id_shift) + number, entered);
        return;
    }
    default:
        if (receiver != nullptr)
        {
            receiver->control_change(channel, controller, value);
        }
        on_controller(controller << id_shift, value << 7);
        return;
    }
    // Selecting a parameter number drives nothing by itself.
    if (receiver != nullptr)
    {
        receiver->control_change(channel, controller, value);
    }
}

void MidiInCcMixin::on_controller(std::int32_t controller_id, std::int32_t value14)
{
    MidiMgr* mgr = use_midi_mgr();
    DspInterface* dsp = use_dsp();
    if (mgr == nullptr || dsp == nullptr)
    {
        return;
    }
    int index = -1;
    float value = -1.0f;
    mgr->map_controller(controller_id, value14, index, value);
    if (index < 0)
    {
        return;
    }
    if (index < dsp->get_nbr_param())
    {
        if (PluginCmdInterface* cmd = mgr->use_cmd())
        {
            cmd->set_param(index, value, priority_level::midi);
        }
    }
    else
    {
        dsp->set_extra_value(index, value);
    }
}

}  // namespace lumo
