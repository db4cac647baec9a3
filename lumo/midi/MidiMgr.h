#pragma once

#include "basic/SettingClientInterface.h"
#include "lumo/midi/MidiControlMap.h"
#include "lumo/midi/MidiOptions.h"
#include "lumo/midi/MidiReceiverInterface.h"

#include <atomic>
#include <cstdint>
#include <string>

namespace lumo
{

class DspInterface;
class MidiInInterface;
class MidiOutInterface;
class PluginCmdInterface;

// MIDI learn and control map: turns controller events into parameter values,
// echoes parameter changes as MIDI on the current output, keeps the map in
// the settings file and the MIDI options in the registry. As a receiver it
// forwards every call to the current output.
class MidiMgr : public MidiReceiverInterface, public basic::SettingClientInterface
{
public:
    static constexpr std::int32_t rpn_selector = 101;
    static constexpr std::int32_t nrpn_selector = 99;
    static constexpr int max_number = 16383;

    // Controller id of a selector (a controller number, 101 for RPN, 99 for
    // NRPN) and a parameter number; -1 when the pair names no MIDI controller id.
    static std::int32_t make_id(int selector, int number);

    // The learn step, then the lookup: index -1 and value -1 when id drives nothing.
    void map_controller(std::int32_t id, std::int32_t value14, int& param_index, float& value);
    int bind(int param_index, int selector, int number);
    int unbind(int param_index);
    void bind_all_to_nrpn();
    // The controller id of a parameter, or -1.
    std::int32_t get_id(int param_index) const { return _map.get_id(param_index); }
    // The parameter a controller drives, or -1.
    int find_param(std::int32_t id) const { return _map.find_index(id); }

    // Arms a learn: the next controller event binds param_index (-1 disarms).
    void set_pending_learn(int param_index) { _pending_learn.store(param_index, std::memory_order_release); }
    int get_pending_learn() const { return _pending_learn.load(std::memory_order_acquire); }
    int get_last_learnt_param() const { return _last_learnt_param.load(std::memory_order_acquire); }
    std::int32_t get_last_learnt_id() const { return _last_learnt_id.load(std::memory_order_acquire); }
    // How many controllers a learn has bound since construction: an editor
    // compares it with the count at arming to tell a completed learn from one
    // still waiting, even when the same controller is learnt again.
    std::uint32_t get_learn_count() const { return _learn_count.load(std::memory_order_acquire); }
    // For a manager that follows another one, whose learns happen elsewhere
    // (the audio side of an editor that runs in a process of its own).
    void set_learn_count(std::uint32_t count) { _learn_count.store(count, std::memory_order_release); }

    // MIDI echo of a parameter change: 0 sent, -1 not taken, -2 no controller.
    int send_param(int channel, int param_index, float value);

    void load_options(const std::string& plugin_name) { _options.load(plugin_name); }
    MidiOptions& use_options() { return _options; }
    int get_nrpn_compatibility() const { return _options.get_nrpn_compatibility(); }
    // The adapter's shutdown: the options will be read again by the next set-up.
    void reset() { _options.reset(); }

    // Block bracketing, on the audio thread.
    void block_start();
    void block_end();

    // Links, none owned.
    void set_dsp(DspInterface* dsp) { _dsp = dsp; }
    DspInterface* use_dsp() const { return _dsp; }
    void set_receiver(MidiReceiverInterface* receiver) { _receiver = receiver; }
    MidiReceiverInterface* use_receiver() const { return _receiver; }
    // Changing a device waits (on the host's thread) until no other thread is
    // still inside a call on the old one, so the caller may then destroy it.
    void set_output(MidiOutInterface* output);
    void set_input(MidiInInterface* input);
    // The current devices, for the host's thread that selects them.
    MidiOutInterface* use_output() const { return _output.load(); }
    MidiInInterface* use_input() const { return _input.load(); }
    void set_port_selector(basic::SettingClientInterface* selector) { _port_selector = selector; }
    void set_cmd(PluginCmdInterface* cmd) { _cmd = cmd; }
    PluginCmdInterface* use_cmd() const { return _cmd; }

    // basic::SettingClientInterface: the "midi" section.
    int save_settings(basic::ConfKeyMulti& root) override;
    int load_settings(const basic::ConfKeyMulti& root) override;

    // MidiReceiverInterface: everything goes to the current output.
    int set_event_time(std::int32_t offset) override;
    int note_on(int channel, int note, float pitch, int zero, float velocity, int one) override;
    int note_off(int channel, int note, float velocity) override;
    int poly_pressure(int channel, int note, float pressure) override;
    int pitch_bend(int channel, float bend) override;
    int program_change(int channel, int program) override;
    int rpn_change(int channel, int number, int value) override;
    int nrpn_change(int channel, int number, int value) override;
    int control_change(int channel, int controller, int value) override;
    int raw_message(int channel, int status, int data1, int data2) override;
    int raw_byte(int status) override;
    int raw_message3(int status, int data1, int data2) override;
    int reserved_a(int a, int b) override;
    int reserved_b() override;

private:
    // Runs call on the current device, or answers 0 without one. Counts
    // itself as a user meanwhile, so a device change waits for it; the audio
    // thread never waits here.
    template <class Device, class Call>
    int with_device(const std::atomic<Device*>& device, Call call);
    void wait_for_users() const;
    void learn(std::int32_t id);
    // Reads one "id_N = cc_M" entry; false when it does not parse.
    static bool parse_entry(const std::string& name, const std::string& value, int& index, std::int32_t& id);
    int load_map(const basic::ConfKeyMulti& map);

    MidiControlMap _map;
    DspInterface* _dsp = nullptr;
    MidiReceiverInterface* _receiver = nullptr;
    std::atomic<MidiOutInterface*> _output{nullptr};
    std::atomic<MidiInInterface*> _input{nullptr};
    std::atomic<int> _device_users{0};
    basic::SettingClientInterface* _port_selector = nullptr;
    PluginCmdInterface* _cmd = nullptr;
    MidiOptions _options;
    std::atomic<int> _pending_learn{-1};
    std::atomic<int> _last_learnt_param{-1};
    std::atomic<std::int32_t> _last_learnt_id{0};
    std::atomic<std::uint32_t> _learn_count{0};
};

}  // namespace lumo
