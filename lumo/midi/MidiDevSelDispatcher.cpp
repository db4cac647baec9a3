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

int MidiDevSelDispatcher::list_inputs()
{
    std::vector<std::string>& names = use_input_names();
    names.clear();
    int first_err = 0;
    for (MidiDevSelCompInterface* component : _components)
    {
        const int first = static_cast<int>(names.size());
        const int err = component->list_inputs(names);
        first_err = first_err != 0 ? first_err : err;
        component->set_input_range(first, static_cast<int>(names.size()) - first);
    }
    return first_err;
}

int MidiDevSelDispatcher::list_outputs()
{
    std::vector<std::string>& names = use_output_names();
    names.clear();
    int first_err = 0;
    for (MidiDevSelCompInterface* component : _components)
    {
        const int first = static_cast<int>(names.size());
        const int err = component->list_outputs(names);
        first_err = first_err != 0 ? first_err : err;
        component->set_output_range(first, static_cast<int>(names.size()) - first);
    }
    return first_err;
}

int MidiDevSelDispatcher::open_input(int index, MidiInInterface*& device)
{
    device = nullptr;
    int err = 0;
    for (MidiDevSelCompInterface* component : _components)
    {
        if (component->holds_input(index))
        {
            err = component->open_input(index, device);
        }
        else
        {
            component->release_input();
        }
    }
    return err;
}

int MidiDevSelDispatcher::open_output(int index, MidiOutInterface*& device)
{
    device = nullptr;
    int err = 0;
    for (MidiDevSelCompInterface* component : _components)
    {
        if (component->holds_output(index))
        {
            err = component->open_output(index, device);
        }
        else
        {
            component->release_output();
        }
    }
    return err;
}

}  // namespace lumo
