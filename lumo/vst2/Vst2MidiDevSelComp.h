#pragma once

#include "lumo/midi/MidiDevSelCompInterface.h"
#include "lumo/vst2/Vst2Component.h"
#include "lumo/vst2/Vst2MidiIn.h"
#include "lumo/vst2/Vst2MidiOut.h"

namespace lumo
{

// The host's MIDI ports: one input (the events the host sends) and one output
// (the events handed back to the host).
class Vst2MidiDevSelComp : public MidiDevSelCompInterface, public Vst2Component
{
public:
    static constexpr const char* input_name = "VST MIDI In interface";
    static constexpr const char* output_name = "VST MIDI Out interface";

    int initialise() override;
    int deinitialise() override;
    int list_inputs(std::vector<std::string>& names) override;
    int list_outputs(std::vector<std::string>& names) override;
    int open_input(int index, MidiInInterface*& device) override;
    int open_output(int index, MidiOutInterface*& device) override;
    void connect_adapter(Vst2Plugin* adapter, MidiMgr* mgr) override;

    Vst2MidiIn& use_input() { return _input; }
    Vst2MidiOut& use_output() { return _output; }

private:
    Vst2MidiIn _input;
    Vst2MidiOut _output;
};

}  // namespace lumo
