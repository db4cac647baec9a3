#pragma once

#include "lumo/midi/MidiDevSelectorInterface.h"

#include <string>
#include <vector>

namespace lumo
{

class MidiDevSelCompInterface;

// The selector the plug-in uses: its ports are those of its components, in
// the order the components were added.
class MidiDevSelDispatcher : public MidiDevSelectorInterface
{
public:
    // Not owned; added before initialise.
    void add_component(MidiDevSelCompInterface* component);

    int initialise() override;
    int deinitialise() override;
    int list_inputs() override;
    int list_outputs() override;
    bool is_initialised() const { return _initialised; }

protected:
    int open_input(int index, MidiInInterface*& device) override;
    int open_output(int index, MidiOutInterface*& device) override;

private:
    template <class List>
    int list_ports(std::vector<std::string>& names, List list);
    template <class Device, class Open>
    int open_port(Device*& device, Open open);

    std::vector<MidiDevSelCompInterface*> _components;
    bool _initialised = false;
};

}  // namespace lumo
