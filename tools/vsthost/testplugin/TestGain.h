#pragma once

#include "TestGainCrash.h"
#include "TestGainEditor.h"
#include "TestGainMidi.h"
#include "lumo/vst2/Vst2Abi.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <vector>

namespace testgain
{

// A small stereo gain written against our own VST 2 header, for testing the
// host tool without the product: two parameters ("Gain" in dB and a "Phase"
// switch), three programs, program and bank chunks, and an editor on Windows.
// It also takes and sends MIDI (TestGainMidi), and crashes on demand
// (TestGainCrash). Parameter values are atomics because hosts set them from
// any thread while audio runs.
class TestGain
{
public:
    static constexpr int param_count = 2;
    static constexpr int program_count = 3;
    static constexpr std::size_t name_size = 24;

    explicit TestGain(lumo::vst2::HostCallback host);
    TestGain(const TestGain&) = delete;
    TestGain& operator=(const TestGain&) = delete;

    lumo::vst2::AEffect* use_effect() { return &_effect; }

    // For the editor, on the host's GUI thread: the values it draws, and a
    // user's gesture, which reaches both the parameter and the host.
    float get_param(std::int32_t index);
    static float get_default(std::int32_t index);
    void begin_edit(std::int32_t index) { call_host(lumo::vst2::HostOp::begin_edit, index, 0, 0.0f); }
    void edit_param(std::int32_t index, float value);
    void end_edit(std::int32_t index) { call_host(lumo::vst2::HostOp::end_edit, index, 0, 0.0f); }
    // Tells the host the editor's new size; false when the host cannot follow.
    bool resize_editor(int width, int height);

private:
    struct Program
    {
        std::array<char, name_size> name{};
        std::array<std::atomic<float>, param_count> values{};
    };

    static TestGain* use_self(lumo::vst2::AEffect* effect);
    static std::intptr_t LUMO_VST2_CALL dispatcher_proc(lumo::vst2::AEffect* effect, std::int32_t opcode,
                                                        std::int32_t index, std::intptr_t value, void* ptr,
                                                        float opt);
    static void LUMO_VST2_CALL process_replacing_proc(lumo::vst2::AEffect* effect, float** inputs,
                                                      float** outputs, std::int32_t frames);
    static void LUMO_VST2_CALL process_proc(lumo::vst2::AEffect* effect, float** inputs, float** outputs,
                                            std::int32_t frames);
    static void LUMO_VST2_CALL set_parameter_proc(lumo::vst2::AEffect* effect, std::int32_t index, float value);
    static float LUMO_VST2_CALL get_parameter_proc(lumo::vst2::AEffect* effect, std::int32_t index);

    std::intptr_t dispatch(lumo::vst2::PluginOp op, std::int32_t index, std::intptr_t value, void* ptr, float opt);
    std::intptr_t dispatch_text(lumo::vst2::PluginOp op, std::int32_t index, char* text);
    std::intptr_t dispatch_editor(lumo::vst2::PluginOp op, void* ptr);

    Program& use_current() { return _programs[static_cast<std::size_t>(_current.load())]; }
    std::intptr_t call_host(lumo::vst2::HostOp op, std::int32_t index, std::intptr_t value, float opt);
    void set_param(std::int32_t index, float value);
    void get_display(std::int32_t index, char* text);
    bool parse_text(std::int32_t index, const char* text);
    bool get_pin(std::int32_t index, bool output, lumo::vst2::PinProperties* pin) const;
    bool get_properties(std::int32_t index, lumo::vst2::ParameterProperties* props) const;
    float get_gain_factor();
    void render(float** inputs, float** outputs, std::int32_t from, std::int32_t to, bool replacing);
    void process_block(float** inputs, float** outputs, std::int32_t frames, bool replacing);
    void ask_host_time();

    std::intptr_t get_chunk(bool preset, void** data);
    std::intptr_t set_chunk(bool preset, const std::uint8_t* data, std::intptr_t size);
    void write_program(const Program& program, std::vector<std::uint8_t>& out) const;
    void read_program(const std::uint8_t* data, Program& program);

    lumo::vst2::AEffect _effect{};
    lumo::vst2::HostCallback _host;
    std::array<Program, program_count> _programs;
    std::atomic<int> _current{0};
    std::vector<std::uint8_t> _chunk;
    TestGainEditor _editor{*this};
    TestGainMidi _midi;
    TestGainCrash _crash;
    lumo::vst2::ERect _rect{0, 0, TestGainEditor::height, TestGainEditor::width};
    double _sample_rate = 44100.0;
};

}  // namespace testgain
