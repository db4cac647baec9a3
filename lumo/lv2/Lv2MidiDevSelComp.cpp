#include "lumo/lv2/Lv2MidiDevSelComp.h"

#include "lumo/midi/MidiMgr.h"

namespace lumo
{

int Lv2MidiDevSelComp::initialise()
{
    const int err = _input.activate();
    return err != 0 ? err : _output.activate();
}

int Lv2MidiDevSelComp::deinitialise()
{
    _output.deactivate();
    return _input.deactivate();
}

int Lv2MidiDevSelComp::list_inputs(std::vector<std::string>& names)
{
    names.insert(names.end(), input_names.begin(), input_names.end());
    return 0;
}

int Lv2MidiDevSelComp::list_outputs(std::vector<std::string>& names)
{
    names.insert(names.end(), output_names.begin(), output_names.end());
    return 0;
}

int Lv2MidiDevSelComp::open_input(int index, MidiInInterface*& device)
{
    device = holds_input(index) ? &_input : nullptr;
    return 0;
}

int Lv2MidiDevSelComp::open_output(int index, MidiOutInterface*& device)
{
    device = holds_output(index) ? &_output : nullptr;
    return 0;
}

void Lv2MidiDevSelComp::connect(DspInterface* dsp, MidiMgr* mgr)
{
    _input.MidiDevInterface::connect(dsp, mgr, mgr != nullptr ? mgr->use_receiver() : nullptr);
    _output.MidiDevInterface::connect(dsp, mgr, nullptr);
}

}  // namespace lumo
