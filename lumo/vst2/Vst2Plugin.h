#pragma once

#include "lumo/AutomationLimit.h"
#include "lumo/GestureQueue.h"
#include "lumo/ParamReorder.h"
#include "lumo/PluginCmdMixin.h"
#include "lumo/vst2/AudioEffectX.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace lumo
{

class BkgInterface;
class DspInterface;
class GuiInterface;
class MidiDevSelDispatcher;
class MidiMgr;
class MidiReceiverInterface;
class Vst2MidiDevSelComp;
class NormalizedParamInterface;

// The VST 2 host adapter: translates the host's requests into calls on the
// audio side and the editor, keeps the program bank (parameter changes are
// arbitrated by the framework's command core), assigns host pins to the
// effect's ports, follows the host tempo and brackets the plug-in's own
// parameter changes with the host's edit gestures.
class Vst2Plugin : public AudioEffectX, public PluginCmdMixin
{
public:
    // Owns the audio side's background task; dsp and gui (may be null) only
    // after take_sides(). Copies bank.
    Vst2Plugin(vst2::HostCallback host, DspInterface* dsp, GuiInterface* gui, MidiReceiverInterface* midi_receiver,
               const BankManager& bank, std::int32_t unique_id);
    ~Vst2Plugin() override;

    // From now on the adapter deletes the audio side and the editor. Called by
    // whoever built them, once the whole adapter (derived classes included)
    // stands, at the moment it lets go of them itself: a construction that
    // fails part way leaves them with that caller, and only there.
    void take_sides() { _owns_sides = true; }

    // Start-up and teardown steps, run by the entry point and the destructor.
    void init_step();
    void default_step();
    void close_step();

    // Applies program n of the bank at the program level, without first keeping
    // the parameters in the program being left (start-up, a loaded chunk).
    void select_program(int program);

    void set_registry_path(const std::string& path) { _registry_path = path; }
    const std::string& get_registry_path() const { return _registry_path; }

    // PluginCmdInterface: the host hears of the change as automation, inside
    // an edit gesture.
    void report_param(int index, float value) override;

    // Closes every open host edit gesture whose parameter is free again. Run by
    // the background thread, or by the host's idle call.
    void close_free_gestures();

    // Services for the host service objects.
    DspInterface* use_dsp() const { return _dsp; }
    GuiInterface* use_gui() const { return _gui; }
    MidiMgr* use_midi_mgr() const override { return _midi_mgr.get(); }
    MidiDevSelDispatcher* use_midi_dispatcher() const { return _midi_dispatcher.get(); }
    Vst2MidiDevSelComp* use_vst2_midi_ports() const { return _vst2_midi_ports.get(); }
    // Hands a list of MIDI events to the host (audio thread).
    void send_vst_events_to_host(vst2::Events* events);
    ParamReorder& use_param_reorder() { return _reorder; }
    BkgInterface* use_bkg_task() const { return _bkg_task.get(); }
    int get_input_pin(int port, int channel) const;
    int get_output_pin(int port, int channel) const;
    const GestureQueue& use_gestures() const { return _gestures; }
    int get_automation_limit() const { return _automation_limit.get_limit(); }
    std::string get_store_path();
    // The audio side's background task; the Windows adapter runs it.
    virtual int start_bkg_task() { return -1; }
    virtual void stop_bkg_task() {}
    // The editor's own window follows a size change; it has none without an editor host.
    virtual void resize_editor_window(int /*width*/, int /*height*/) {}
    // Screen pixels per editor pixel of the open editor (its window's zoom).
    virtual int get_editor_zoom() const { return 1; }

    // AudioEffect.
    void set_parameter(int index, float value) override;
    float get_parameter(int index) override;
    void process(float** inputs, float** outputs, int frames) override;
    void process_replacing(float** inputs, float** outputs, int frames) override;
    void set_program_index(int program) override;
    void set_program_name(const char* name) override;
    void get_program_name(char* name) override;
    void get_parameter_label(int index, char* text) override;
    void get_parameter_display(int index, char* text) override;
    void get_parameter_name(int index, char* text) override;
    void set_sample_rate(float rate) override;
    void suspend() override;
    void resume() override;
    int get_chunk(void** data, bool is_preset) override;
    int set_chunk(void* data, int byte_size, bool is_preset) override;

    // AudioEffectX.
    int process_events(vst2::Events* events) override;
    bool can_parameter_be_automated(int index) override;
    bool string_to_parameter(int index, const char* text) override;
    bool get_program_name_indexed(int category, int index, char* text) override;
    bool copy_program(int destination) override;
    bool get_input_properties(int pin, vst2::PinProperties* props) override;
    bool get_output_properties(int pin, vst2::PinProperties* props) override;
    int get_plug_category() override;
    bool get_effect_name(char* text) override;
    bool get_vendor_string(char* text) override;
    bool get_product_string(char* text) override;
    int get_vendor_version() override;
    int can_do(const char* text) override;
    bool get_parameter_properties(int index, vst2::ParameterProperties* props) override;

protected:
    // Called at the start of every audio block: hands over a published bank,
    // follows the host tempo.
    void begin_block();
    // Tempo changes for the editor; the Windows adapter hands them to its editor host.
    virtual void post_tempo(float bpm);
    // PluginCmdMixin.
    int get_current_index() const override;
    void report_program_value(int index, float value) override;
    void end_program_change() override;

private:
    using PinMap = std::vector<std::array<int, 2>>;

    static PinMap assign_pins(const DspInterface& dsp, bool inputs, int& next_pin);
    bool get_pin_properties(bool inputs, int pin, vst2::PinProperties* props) const;
    bool is_host_index(int index) const { return index >= 0 && index < get_nbr_params(); }
    NormalizedParamInterface& use_host_param(int host_index);
    // Captures the audio side's name and values into the current program
    // (a chunk carries what the audio side holds).
    void refresh_current_program();
    void render(float** inputs, float** outputs, int frames, bool adding);
    void write_silence(float** outputs, int frames) const;
    std::vector<int> get_automation_priorities();
    void create_midi();
    void init_midi();
    void close_midi();

    DspInterface* _dsp;
    GuiInterface* _gui;
    MidiReceiverInterface* _midi_receiver;
    std::unique_ptr<BkgInterface> _bkg_task;
    std::unique_ptr<MidiMgr> _midi_mgr;
    std::unique_ptr<Vst2MidiDevSelComp> _vst2_midi_ports;
    std::unique_ptr<MidiDevSelDispatcher> _midi_dispatcher;
    PinMap _input_pins;
    PinMap _output_pins;
    AutomationLimit _automation_limit;
    float _last_tempo = 0.0f;
    std::string _registry_path;
    ParamReorder _reorder;
    std::vector<std::uint8_t> _chunk;
    GestureQueue _gestures;
    bool _owns_sides = false;
};

}  // namespace lumo
