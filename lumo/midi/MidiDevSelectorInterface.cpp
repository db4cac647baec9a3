#include "lumo/midi/MidiDevSelectorInterface.h"

#include "basic/ConfKeyData.h"
#include "basic/ConfKeyMulti.h"
#include "lumo/TextCompare.h"
#include "lumo/midi/MidiInInterface.h"
#include "lumo/midi/MidiMgr.h"
#include "lumo/midi/MidiOutInterface.h"

namespace lumo
{
namespace
{

constexpr const char* section_in = "port_in";
constexpr const char* section_out = "port_out";
constexpr const char* key_name = "name";
constexpr const char* name_none = "none";

}  // namespace

template <class Device, class Open>
int MidiDevSelectorInterface::select(int index, int& selected, void (MidiMgr::*set_device)(Device*), Device* current,
                                     Open open)
{
    if (_mgr == nullptr)
    {
        return -1;
    }
    if (current != nullptr)
    {
        const int err = current->close();
        if (err != 0)
        {
            return err;
        }
    }
    selected = none;
    // The learn manager lets go of the device (and waits for its users)
    // before the dispatcher may destroy it.
    (_mgr->*set_device)(nullptr);
    Device* device = nullptr;
    int err = open(index, device);
    if (err != 0 || device == nullptr)
    {
        return err;
    }
    err = device->open();
    if (err != 0)
    {
        return err;
    }
    selected = index;
    (_mgr->*set_device)(device);
    return 0;
}

int MidiDevSelectorInterface::select_input(int index)
{
    return select(index, _selected_input, &MidiMgr::set_input, _mgr != nullptr ? _mgr->use_input() : nullptr,
                  [this](int i, MidiInInterface*& device) { return open_input(i, device); });
}

int MidiDevSelectorInterface::select_output(int index)
{
    return select(index, _selected_output, &MidiMgr::set_output, _mgr != nullptr ? _mgr->use_output() : nullptr,
                  [this](int i, MidiOutInterface*& device) { return open_output(i, device); });
}

int MidiDevSelectorInterface::select_defaults(bool input, bool output)
{
    const int err = select_input(input && !_input_names.empty() ? 0 : none);
    if (err != 0)
    {
        return err;
    }
    return select_output(output && !_output_names.empty() ? 0 : none);
}

int MidiDevSelectorInterface::save_port(basic::ConfKeyMulti& midi, const char* section, int selected,
                                        const std::vector<std::string>& names, basic::SettingClientInterface* device)
{
    basic::ConfKeyMulti port(section);
    const bool valid = selected >= 0 && selected < static_cast<int>(names.size());
    port.set_key(basic::ConfKeyData(key_name, valid ? names[static_cast<std::size_t>(selected)] : name_none));
    if (valid && device != nullptr)
    {
        const int err = device->save_settings(port);
        if (err != 0)
        {
            return err;
        }
    }
    midi.set_key(port);
    return 0;
}

int MidiDevSelectorInterface::save_settings(basic::ConfKeyMulti& midi)
{
    MidiInInterface* in = _mgr != nullptr ? _mgr->use_input() : nullptr;
    MidiOutInterface* out = _mgr != nullptr ? _mgr->use_output() : nullptr;
    const int err = save_port(midi, section_in, _selected_input, _input_names, in);
    return err != 0 ? err : save_port(midi, section_out, _selected_output, _output_names, out);
}

int MidiDevSelectorInterface::find_name(const std::vector<std::string>& names, const std::string& name)
{
    for (std::size_t i = 0; i < names.size(); ++i)
    {
        if (equals_ignoring_case(names[i].c_str(), name.c_str()))
        {
            return static_cast<int>(i);
        }
    }
    return none;
}

int MidiDevSelectorInterface::load_settings(const basic::ConfKeyMulti& midi)
{
    const std::string in_name = midi.get_string(std::string(section_in) + "/" + key_name);
    int err = in_name.empty() ? 0 : select_input(find_name(_input_names, in_name));
    if (err == 0)
    {
        const std::string out_name = midi.get_string(std::string(section_out) + "/" + key_name);
        err = out_name.empty() ? 0 : select_output(find_name(_output_names, out_name));
    }
    const int in_section = midi.find_key_multi(section_in);
    if (_selected_input != none && in_section >= 0 && _mgr != nullptr && _mgr->use_input() != nullptr)
    {
        _mgr->use_input()->load_settings(dynamic_cast<const basic::ConfKeyMulti&>(midi.use_key(in_section)));
    }
    const int out_section = midi.find_key_multi(section_out);
    if (_selected_output != none && out_section >= 0 && _mgr != nullptr && _mgr->use_output() != nullptr)
    {
        _mgr->use_output()->load_settings(dynamic_cast<const basic::ConfKeyMulti&>(midi.use_key(out_section)));
    }
    return err;
}

}  // namespace lumo
