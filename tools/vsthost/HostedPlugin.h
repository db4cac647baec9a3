#pragma once

#include "Transport.h"
#include "lumo/vst2/Vst2Abi.h"

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

namespace vsthost
{

class PluginLibrary;

// Where a host with an open editor learns what the plug-in asks of its
// window and which gestures and automation the editor sends. Called on the
// thread the plug-in calls from, during the plug-in's call.
class EditorListenerInterface
{
public:
    virtual ~EditorListenerInterface() = default;
    // The editor wants this client size; false when the window cannot follow.
    virtual bool size_window(int width, int height) = 0;
    // begin_edit, automate (with the value) or end_edit for a parameter.
    virtual void on_edit_request(lumo::vst2::HostOp op, int index, float value) = 0;
};

// What the plug-in asked of the host so far; written from any thread.
struct HostRequests
{
    std::atomic<int> automate{0};
    std::atomic<int> begin_edit{0};
    std::atomic<int> end_edit{0};
    std::atomic<int> get_time{0};
    std::atomic<int> size_window{0};
};

// One instance of a VST 2 plug-in, opened on construction and closed on
// destruction, with the host side of the interface: the callback, the
// transport and text buffers large enough for plug-ins that write past the
// interface's sizes. Calls go straight to the plug-in; the caller decides on
// which thread.
class HostedPlugin
{
public:
    // Throws std::runtime_error when the entry point gives no valid record.
    explicit HostedPlugin(const PluginLibrary& library);
    HostedPlugin(const HostedPlugin&) = delete;
    HostedPlugin& operator=(const HostedPlugin&) = delete;
    ~HostedPlugin();

    std::intptr_t dispatch(lumo::vst2::PluginOp op, std::int32_t index = 0, std::intptr_t value = 0,
                           void* ptr = nullptr, float opt = 0.0f);
    const lumo::vst2::AEffect& use_effect() const { return *_effect; }

    // Identity and counts as the record and the dispatcher give them.
    std::int32_t get_unique_id() const { return _effect->unique_id; }
    std::int32_t get_flags() const { return _effect->flags; }
    bool has_flag(std::int32_t flag) const { return (_effect->flags & flag) != 0; }
    int get_num_params() const { return _effect->num_params; }
    int get_num_programs() const { return _effect->num_programs; }
    int get_num_inputs() const { return _effect->num_inputs; }
    int get_num_outputs() const { return _effect->num_outputs; }
    std::string get_text(lumo::vst2::PluginOp op, std::int32_t index = 0);
    std::intptr_t can_do(const std::string& text);

    // Parameters by host index.
    float get_param(int index);
    void set_param(int index, float value);
    std::string get_param_name(int index) { return get_text(lumo::vst2::PluginOp::get_param_name, index); }
    std::string get_param_label(int index) { return get_text(lumo::vst2::PluginOp::get_param_label, index); }
    std::string get_param_display(int index) { return get_text(lumo::vst2::PluginOp::get_param_display, index); }
    bool get_param_properties(int index, lumo::vst2::ParameterProperties& props);
    // The plug-in's answer to parsing text for a parameter.
    bool set_param_text(int index, const std::string& text);
    // Index of the parameter with this name (letter case ignored) or number; -1 when none.
    int find_param(const std::string& name);

    // Programs.
    int get_program();
    void set_program(int index);
    std::string get_program_name() { return get_text(lumo::vst2::PluginOp::get_program_name); }
    void set_program_name(const std::string& name);
    // Empty when the plug-in does not answer for that index.
    std::string get_program_name_indexed(int index);

    // State as the plug-in's own chunk (empty when it gives none).
    std::vector<std::uint8_t> get_chunk(bool preset);
    bool set_chunk(const std::vector<std::uint8_t>& chunk, bool preset);

    bool get_pin_properties(int pin, bool output, lumo::vst2::PinProperties& props);

    // Audio set-up and processing.
    void set_sample_rate(double rate);
    double get_sample_rate() const { return _sample_rate; }
    void set_block_size(int frames);
    int get_block_size() const { return _block_size; }
    void resume();
    void suspend();
    bool is_resumed() const { return _resumed; }
    // One block through the replacing call (or the accumulating one into
    // cleared outputs when that is all the plug-in has); the transport moves on.
    void process(float** inputs, float** outputs, std::int32_t frames);
    Transport& use_transport() { return _transport; }
    HostRequests& use_requests() { return _requests; }

    // Editor; the parent is a native window of the platform.
    bool has_editor() const { return has_flag(lumo::vst2::effect_flags::has_editor); }
    bool get_editor_rect(lumo::vst2::ERect& rect);
    bool open_editor(void* parent);
    void close_editor();
    bool is_editor_open() const { return _editor_open; }
    // Null detaches; the listener must outlive the editor it watches.
    void set_editor_listener(EditorListenerInterface* listener) { _editor_listener = listener; }

private:
    static std::intptr_t LUMO_VST2_CALL host_callback(lumo::vst2::AEffect* effect, std::int32_t opcode,
                                                      std::int32_t index, std::intptr_t value, void* ptr,
                                                      float opt);
    std::intptr_t answer(lumo::vst2::HostOp op, std::int32_t index, std::intptr_t value, void* ptr, float opt);
    std::intptr_t answer_editor(lumo::vst2::HostOp op, std::int32_t index, std::intptr_t value, float opt);

    lumo::vst2::AEffect* _effect = nullptr;
    std::string _directory;
    double _sample_rate = 44100.0;
    int _block_size = 512;
    bool _resumed = false;
    bool _editor_open = false;
    Transport _transport;
    HostRequests _requests;
    std::atomic<EditorListenerInterface*> _editor_listener{nullptr};
};

}  // namespace vsthost
