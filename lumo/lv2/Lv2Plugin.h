#pragma once

#include "lumo/ParamReorder.h"
#include "lumo/PluginCmdMixin.h"
#include "lumo/lv2/Lv2ControlPort.h"
#include "lumo/lv2/Lv2LearnLink.h"
#include "lumo/lv2/Lv2Log.h"
#include "lumo/lv2/Lv2PortLayout.h"
#include "lumo/lv2/Lv2State.h"
#include "lumo/lv2/Lv2Urids.h"

#include <lv2/atom/atom.h>
#include <lv2/log/log.h>
#include <lv2/state/state.h>
#include <lv2/urid/urid.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace lumo
{

class DspInterface;
class Lv2MidiDevSelComp;
class MidiDevSelDispatcher;
class MidiMgr;
class MidiReceiverInterface;
struct Lv2Event;
struct Lv2PluginRecipe;

// The LV2 host adapter: builds the audio side as the VST 2 entry does, turns
// the host's ports into calls on it (control changes as host automation,
// MIDI and the host's tempo at their frames), keeps the current program
// (parameter changes are arbitrated by the framework's command core) and
// saves it with the MIDI bindings as the plug-in's state. It asks the host
// for nothing: without the URID map its atom ports are simply left alone.
class Lv2Plugin : public PluginCmdMixin
{
public:
    // What the host offers; either may be null.
    struct Features
    {
        const LV2_URID_Map* map = nullptr;
        const LV2_Log_Log* log = nullptr;
    };

    // rate must be positive and finite. Builds, wires and initialises the
    // audio side (the settings autoload included), then selects the program
    // of start-up. Throws when any of it fails.
    Lv2Plugin(const Lv2PluginRecipe& recipe, double rate, const std::string& bundle_path, const Features& features);
    ~Lv2Plugin() override;
    Lv2Plugin(const Lv2Plugin&) = delete;
    Lv2Plugin& operator=(const Lv2Plugin&) = delete;

    const Lv2PortLayout& use_layout() const { return _layout; }
    const Lv2ControlPort& use_control(int index) const { return _controls[static_cast<std::size_t>(index)]; }
    DspInterface& use_dsp() { return *_dsp; }

    // The host's calls. connect_port ignores ports it does not have.
    void connect_port(std::uint32_t port, void* data);
    // The host's activate and deactivate: the audio side starts afresh at
    // the next block, as after a VST 2 host's suspend and resume.
    void reset();
    void run(std::uint32_t frames);
    LV2_State_Status save(LV2_State_Store_Function store, LV2_State_Handle handle);
    LV2_State_Status restore(LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle);

    // PluginCmdInterface: the host follows its own control ports, so what is
    // left to tell is the MIDI echo.
    void report_param(int index, float value) override;

    // Services for the host service object.
    MidiMgr* use_midi_mgr() const override { return _midi_mgr.get(); }
    MidiDevSelDispatcher* use_midi_dispatcher() const { return _midi_dispatcher.get(); }
    ParamReorder& use_param_reorder() { return _reorder; }
    bool is_input_connected(int port, int channel) const;
    bool is_output_connected(int port, int channel) const;
    // Once the host has sent a tempo it is taken to always have one.
    bool has_host_tempo() const { return _host_tempo_seen.load(std::memory_order_acquire); }
    double get_host_tempo() const { return _host_tempo.load(std::memory_order_relaxed); }
    std::string get_store_path() const { return _store_path; }

private:
    Lv2Plugin(std::unique_ptr<DspInterface> dsp, const Lv2PluginRecipe& recipe, double rate,
              const std::string& bundle_path, const Features& features);
    void create_midi(MidiReceiverInterface* receiver);
    void init_midi();
    void close_midi();
    void select_program();
    // Control ports whose value changed since the last block, as host automation.
    void apply_controls();
    void take_event(const Lv2Event& event);
    void follow_tempo(double bpm);
    // Frames from .. to of the block: the audio side's output, or silence
    // when the audio side cannot run for want of connected ports.
    void render(std::uint32_t from, std::uint32_t to);
    bool can_render() const;

    std::unique_ptr<DspInterface> _dsp;
    Lv2PortLayout _layout;
    Lv2Urids _urids;
    Lv2LearnLink _learn_link;
    Lv2Log _log;
    Lv2State _state;
    std::string _store_path;
    ParamReorder _reorder;
    std::vector<Lv2ControlPort> _controls;
    std::unique_ptr<MidiMgr> _midi_mgr;
    std::unique_ptr<Lv2MidiDevSelComp> _midi_ports;
    std::unique_ptr<MidiDevSelDispatcher> _midi_dispatcher;

    // The host's buffers; null until connected.
    std::vector<const float*> _audio_in;
    std::vector<float*> _audio_out;
    std::vector<const float*> _control_in;
    const LV2_Atom_Sequence* _atom_in = nullptr;
    LV2_Atom_Sequence* _atom_out = nullptr;
    // Per-call views of the audio buffers at the current frame.
    std::vector<const float*> _in_view;
    std::vector<float*> _out_view;
    // The value of each control port seen last; NaN before the first block,
    // so that the first block applies every connected port.
    std::vector<float> _last_control;
    float _last_tempo = 0.0f;
    std::atomic<bool> _host_tempo_seen{false};
    std::atomic<double> _host_tempo{0.0};
};

}  // namespace lumo
