#pragma once

#include "lumo/lv2/Lv2MidiIn.h"
#include "lumo/lv2/Lv2MidiOut.h"
#include "lumo/midi/MidiDevSelCompInterface.h"

#include <array>

namespace lumo
{

class DspInterface;
class MidiMgr;

// The host's MIDI ports: one input (the host's input sequence) and one output
// (the host's output sequence). Each is listed under its own name and, after
// it, under the name of the VST 2 build's host port, so that one settings file
// selects the host's ports in both builds.
class Lv2MidiDevSelComp : public MidiDevSelCompInterface
{
public:
    static constexpr std::array<const char*, 2> input_names{"LV2 MIDI In interface", "VST MIDI In interface"};
    static constexpr std::array<const char*, 2> output_names{"LV2 MIDI Out interface", "VST MIDI Out interface"};

    int initialise() override;
    int deinitialise() override;
    int list_inputs(std::vector<std::string>& names) override;
    int list_outputs(std::vector<std::string>& names) override;
    int open_input(int index, MidiInInterface*& device) override;
    int open_output(int index, MidiOutInterface*& device) override;

    void connect(DspInterface* dsp, MidiMgr* mgr);
    Lv2MidiIn& use_input() { return _input; }
    Lv2MidiOut& use_output() { return _output; }

private:
    Lv2MidiIn _input;
    Lv2MidiOut _output;
};

}  // namespace lumo
