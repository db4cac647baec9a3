#include "lumo/vst2/Vst2MidiDevSelComp.h"

namespace lumo
{

int Vst2MidiDevSelComp::initialise()
{
    const int err = _input.activate();
    return err != 0 ? err : _output.activate();
}

int Vst2MidiDevSelComp::deinitialise()
{
    _output.deactivate();
    return _input.deactivate();
}

int Vst2MidiDevSelComp::list_inputs(std::vector<std::string>& names)
{
    names.emplace_back(input_name);
    return 0;
}

int Vst2MidiDevSelComp::list_outputs(std::vector<std::string>& names)
{
    names.emplace_back(output_name);
    return 0;
}

int Vst2MidiDevSelComp::open_input(int index, MidiInInterface*& device)
{
    device = index == get_first_input() ? &_input : nullptr;
    return 0;
}

int Vst2MidiDevSelComp::open_output(int index, MidiOutInterface*& device)
{
    device = index == get_first_output() ? &_output : nullptr;
    return 0;
}

void Vst2MidiDevSelComp::connect_adapter(Vst2Plugin* adapter, MidiMgr* mgr)
{
    _input.connect_adapter(adapter, mgr);
    _output.connect_adapter(adapter, mgr);
}

}  // namespace lumo
