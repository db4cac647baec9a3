#pragma once

#include "lumo/midi/MidiDevSelCompInterface.h"

#include <memory>

namespace lumo
{

class MciMidiIn;
class MciMidiOut;
struct MciMidiApi;

// The operating system's MIDI ports, in device order. At most one input and
// one output exist at a time, created when their port is opened.
class MciMidiDevSelComp : public MidiDevSelCompInterface
{
public:
    explicit MciMidiDevSelComp(const MciMidiApi& api);
    ~MciMidiDevSelComp() override;

    int list_inputs(std::vector<std::string>& names) override;
    int list_outputs(std::vector<std::string>& names) override;
    int open_input(int index, MidiInInterface*& device) override;
    int open_output(int index, MidiOutInterface*& device) override;
    int release_input() override;
    int release_output() override;

private:
    static int list(unsigned count, int (*get_name)(unsigned, std::string&), std::vector<std::string>& names);
    // Connects a new device to the learn manager the dispatcher serves.
    void connect_device(MidiInInterface& device) const;
    void connect_device(MidiOutInterface& device) const;
    template <class Device, class Port>
    int open_port(bool held, int local, std::unique_ptr<Port>& slot, Device*& device);

    const MciMidiApi& _api;
    std::unique_ptr<MciMidiIn> _input;
    std::unique_ptr<MciMidiOut> _output;
};

}  // namespace lumo
