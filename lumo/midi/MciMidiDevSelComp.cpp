#include "lumo/midi/MciMidiDevSelComp.h"

#include "lumo/midi/MciMidiApi.h"
#include "lumo/midi/MciMidiIn.h"
#include "lumo/midi/MciMidiOut.h"
#include "lumo/midi/MidiDevSelDispatcher.h"
#include "lumo/midi/MidiMgr.h"

namespace lumo
{

MciMidiDevSelComp::MciMidiDevSelComp(const MciMidiApi& api) : _api(api)
{
}

MciMidiDevSelComp::~MciMidiDevSelComp() = default;

int MciMidiDevSelComp::list(unsigned count, int (*get_name)(unsigned, std::string&), std::vector<std::string>& names)
{
    for (unsigned n = 0; n < count; ++n)
    {
        std::string name;
        if (get_name(n, name) != 0)
        {
            return -1;
        }
        names.push_back(name);
    }
    return 0;
}

int MciMidiDevSelComp::list_inputs(std::vector<std::string>& names)
{
    return list(_api.in_get_num_devs(), _api.in_get_name, names);
}

int MciMidiDevSelComp::list_outputs(std::vector<std::string>& names)
{
    return list(_api.out_get_num_devs(), _api.out_get_name, names);
}

void MciMidiDevSelComp::connect_device(MidiInInterface& device) const
{
    MidiDevSelDispatcher* dispatcher = use_dispatcher();
    MidiMgr* mgr = dispatcher != nullptr ? dispatcher->use_midi_mgr() : nullptr;
    device.connect(mgr != nullptr ? mgr->use_dsp() : nullptr, mgr, mgr != nullptr ? mgr->use_receiver() : nullptr);
}

void MciMidiDevSelComp::connect_device(MidiOutInterface& device) const
{
    MidiDevSelDispatcher* dispatcher = use_dispatcher();
    MidiMgr* mgr = dispatcher != nullptr ? dispatcher->use_midi_mgr() : nullptr;
    device.connect(mgr != nullptr ? mgr->use_dsp() : nullptr, mgr, nullptr);
}

template <class Device, class Port>
int MciMidiDevSelComp::open_port(bool held, int local, std::unique_ptr<Port>& slot, Device*& device)
{
    device = nullptr;
    slot.reset();
    if (!held)
    {
        return 0;
    }
    try
    {
        auto port = std::make_unique<Port>(_api, static_cast<unsigned>(local));
        connect_device(*port);
        if (port->activate() != 0)
        {
            return -1;
        }
        slot = std::move(port);
    }
    catch (...)
    {
        // A port that cannot be built (no memory for its ring) is a failed open.
        return -1;
    }
    device = slot.get();
    return 0;
}

int MciMidiDevSelComp::open_input(int index, MidiInInterface*& device)
{
    return open_port(holds_input(index), index - get_first_input(), _input, device);
}

int MciMidiDevSelComp::open_output(int index, MidiOutInterface*& device)
{
    return open_port(holds_output(index), index - get_first_output(), _output, device);
}

int MciMidiDevSelComp::release_input()
{
    _input.reset();
    return 0;
}

int MciMidiDevSelComp::release_output()
{
    _output.reset();
    return 0;
}

}  // namespace lumo
