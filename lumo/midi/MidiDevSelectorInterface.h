#pragma once

#include "basic/SettingClientInterface.h"

#include <string>
#include <vector>

namespace lumo
{

class MidiInInterface;
class MidiMgr;
class MidiOutInterface;

// The list of MIDI ports and the one input and one output selected among
// them; the selection is kept by name in the settings file.
class MidiDevSelectorInterface : public basic::SettingClientInterface
{
public:
    static constexpr int none = -1;

    ~MidiDevSelectorInterface() override = default;

    virtual int initialise() = 0;
    virtual int deinitialise() = 0;
    // Rebuild the name lists.
    virtual int list_inputs() = 0;
    virtual int list_outputs() = 0;

    // Closes the current device, opens port index (none: no port) and makes
    // it the learn manager's: 0 or the first failure, after which no device
    // is selected.
    int select_input(int index);
    int select_output(int index);
    // Port 0 of each kind asked for, when there is one; else none.
    int select_defaults(bool input, bool output);

    int get_selected_input() const { return _selected_input; }
    int get_selected_output() const { return _selected_output; }
    const std::vector<std::string>& get_input_names() const { return _input_names; }
    const std::vector<std::string>& get_output_names() const { return _output_names; }

    void set_midi_mgr(MidiMgr* mgr) { _mgr = mgr; }
    MidiMgr* use_midi_mgr() const { return _mgr; }

    // basic::SettingClientInterface: "port_in" and "port_out" inside the
    // "midi" section given.
    int save_settings(basic::ConfKeyMulti& midi) override;
    int load_settings(const basic::ConfKeyMulti& midi) override;

protected:
    virtual int open_input(int index, MidiInInterface*& device) = 0;
    virtual int open_output(int index, MidiOutInterface*& device) = 0;

    std::vector<std::string>& use_input_names() { return _input_names; }
    std::vector<std::string>& use_output_names() { return _output_names; }

private:
    template <class Device, class Open>
    int select(int index, int& selected, void (MidiMgr::*set_device)(Device*), Device* current, Open open);
    int save_port(basic::ConfKeyMulti& midi, const char* section, int selected, const std::vector<std::string>& names,
                  basic::SettingClientInterface* device);
    static int find_name(const std::vector<std::string>& names, const std::string& name);

    MidiMgr* _mgr = nullptr;
    std::vector<std::string> _input_names;
    std::vector<std::string> _output_names;
    int _selected_input = none;
    int _selected_output = none;
};

}  // namespace lumo
