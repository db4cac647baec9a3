#include "lumo/midi/MidiDevSelDispatcher.h"

#include "lumo/midi/MidiDevSelCompInterface.h"

namespace lumo
{

void MidiDevSelDispatcher::add_component(MidiDevSelCompInterface* component)
{
    if (component != nullptr)
    {
        component->set_dispatcher(this);
        _components.push_back(component);
    }
}

int MidiDevSelDispatcher::initialise()
{
    for (MidiDevSelCompInterface* component : _components)
    {
        const int err = component->initialise();
        if (err != 0)
        {
            return err;
        }
    }
    _initialised = true;
    return 0;
}

int MidiDevSelDispatcher::deinitialise()
{
    int first_err = 0;
    for (MidiDevSelCompInterface* component : _components)
    {
        const int err = component->deinitialise();
        first_err = first_err != 0 ? first_err : err;
        component->set_input_range(-1, 0);
        component->set_output_range(-1, 0);
    }
    _initialised = false;
    use_input_names().clear();
    use_output_names().clear();
    return first_err;
}

template <class List>
int MidiDevSelDispatcher::list_ports(std::vector<std::string>& names, List list)
{
    names.clear();
    int first_err = 0;
    for (MidiDevSelCompInterface* component : _components)
    {
        const int first = static_cast<int>(names.size());
        const int err = list(*component, first);
        first_err = first_err != 0 ? first_err : err;
    }
    return first_err;
}

int MidiDevSelDispatcher::list_inputs()
{
    std::vector<std::string>& names = use_input_names();
    return list_ports(names, [&names](MidiDevSelCompInterface& c, int first) {
        const int err = c.list_inputs(names);
        c.set_input_range(first, static_cast<int>(names.size()) - first);
        return err;
    });
}

int MidiDevSelDispatcher::list_outputs()
{
    std::vector<std::string>& names = use_output_names();
    return list_ports(names, [&names](MidiDevSelCompInterface& c, int first) {
        const int err = c.list_outputs(names);
        c.set_output_range(first, static_cast<int>(names.size()) - first);
        return err;
    });
}

template <class Device, class Open>
int MidiDevSelDispatcher::open_port(Device*& device, Open open)
{
    device = nullptr;
    int err = 0;
    for (MidiDevSelCompInterface* component : _components)
    {
        open(*component, err);
    }
    return err;
}

int MidiDevSelDispatcher::open_input(int index, MidiInInterface*& device)
{
    // The component that holds the port opens it; every other one lets its
    // own input go, so that only one input is open.
    return open_port(device, [index, &device](MidiDevSelCompInterface& c, int& err) {
        if (c.holds_input(index))
        {
            err = c.open_input(index, device);
        }
        else
        {
            c.release_input();
        }
    });
}

int MidiDevSelDispatcher::open_output(int index, MidiOutInterface*& device)
{
    return open_port(device, [index, &device](MidiDevSelCompInterface& c, int& err) {
        if (c.holds_output(index))
        {
            err = c.open_output(index, device);
        }
        else
        {
            c.release_output();
        }
    });
}

}  // namespace lumo
