#pragma once

#include <string>
#include <vector>

namespace lumo
{

class MidiDevSelDispatcher;
class MidiInInterface;
class MidiOutInterface;

// One source of MIDI ports (the host, the operating system). Its ports get
// global indexes in the dispatcher's list, starting at its first indexes.
class MidiDevSelCompInterface
{
public:
    virtual ~MidiDevSelCompInterface() = default;

    virtual int initialise() { return 0; }
    // Forgets the ports; the dispatcher then resets the indexes.
    virtual int deinitialise() { return 0; }
    // Append the names of the ports; 0 or -1.
    virtual int list_inputs(std::vector<std::string>& names) = 0;
    virtual int list_outputs(std::vector<std::string>& names) = 0;
    // The device of a global index this component holds, or null (0) for any
    // other index; -1 when opening failed.
    virtual int open_input(int index, MidiInInterface*& device) = 0;
    virtual int open_output(int index, MidiOutInterface*& device) = 0;
    virtual int release_input() { return 0; }
    virtual int release_output() { return 0; }

    void set_dispatcher(MidiDevSelDispatcher* dispatcher) { _dispatcher = dispatcher; }
    MidiDevSelDispatcher* use_dispatcher() const { return _dispatcher; }
    void set_input_range(int first, int count)
    {
        _first_input = first;
        _nbr_inputs = count;
    }
    void set_output_range(int first, int count)
    {
        _first_output = first;
        _nbr_outputs = count;
    }
    bool holds_input(int index) const { return index >= _first_input && index < _first_input + _nbr_inputs; }
    bool holds_output(int index) const { return index >= _first_output && index < _first_output + _nbr_outputs; }
    int get_first_input() const { return _first_input; }
    int get_first_output() const { return _first_output; }

private:
    MidiDevSelDispatcher* _dispatcher = nullptr;
    int _first_input = -1;
    int _nbr_inputs = 0;
    int _first_output = -1;
    int _nbr_outputs = 0;
};

}  // namespace lumo
