#pragma once

#include "lumo/vst2/Vst2Abi.h"

#include <cstdint>

namespace lumo
{

class AEffEditor;

// The plug-in object behind a VST 2 effect record: fills the record, routes the
// host's calls to virtual operations and wraps the host callback. Every entry
// from the host runs with our floating-point modes (FpuModeGuard) and lets no
// exception escape; a failing call answers the neutral value of its opcode.
class AudioEffect
{
public:
    AudioEffect(vst2::HostCallback host, int nbr_programs, int nbr_params);
    virtual ~AudioEffect();
    AudioEffect(const AudioEffect&) = delete;
    AudioEffect& operator=(const AudioEffect&) = delete;

    vst2::AEffect* use_aeffect() { return &_aeffect; }
    static AudioEffect* from_aeffect(vst2::AEffect* effect);

    // Calls the host; 0 when there is no host callback.
    std::intptr_t call_host(vst2::HostOp op, std::int32_t index = 0, std::intptr_t value = 0,
                            void* ptr = nullptr, float opt = 0.0f);
    bool has_host() const { return _host != nullptr; }

    // Dispatcher opcodes of the original interface (0 to 24); answers 0 to anything else.
    virtual std::intptr_t dispatch(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                                   float opt);

    virtual void set_parameter(int index, float value);
    virtual float get_parameter(int index);
    virtual void process(float** inputs, float** outputs, int frames);
    virtual void process_replacing(float** inputs, float** outputs, int frames);

    virtual void open() {}
    virtual void close() {}
    virtual void set_program_index(int program) { _current_program = program; }
    int get_program_index() const { return _current_program; }
    virtual void set_program_name(const char* /*name*/) {}
    virtual void get_program_name(char* name);
    virtual void get_parameter_label(int index, char* text);
    virtual void get_parameter_display(int index, char* text);
    virtual void get_parameter_name(int index, char* text);
    virtual void set_sample_rate(float rate) { _sample_rate = rate; }
    virtual void set_block_size(int frames) { _block_size = frames; }
    virtual void suspend() {}
    virtual void resume() {}
    // index 1: one program, 0: the whole bank. The answer is the byte count.
    virtual int get_chunk(void** data, bool is_preset);
    // 1 when the chunk was taken.
    virtual int set_chunk(void* data, int byte_size, bool is_preset);

    float get_sample_rate() const { return _sample_rate; }
    int get_block_size() const { return _block_size; }
    int get_nbr_programs() const { return _aeffect.num_programs; }
    int get_nbr_params() const { return _aeffect.num_params; }
    int get_nbr_inputs() const { return _aeffect.num_inputs; }
    int get_nbr_outputs() const { return _aeffect.num_outputs; }

    void set_editor(AEffEditor* editor);
    AEffEditor* use_editor() const { return _editor; }

protected:
    void set_unique_id(std::int32_t id) { _aeffect.unique_id = id; }
    void set_nbr_inputs(int n) { _aeffect.num_inputs = n; }
    void set_nbr_outputs(int n) { _aeffect.num_outputs = n; }
    void set_flag(std::int32_t flag, bool on);
    void set_version(std::int32_t version) { _aeffect.version = version; }

private:
    std::intptr_t dispatch_editor(std::int32_t opcode, void* ptr);

    vst2::AEffect _aeffect{};
    vst2::HostCallback _host;
    AEffEditor* _editor = nullptr;  // owned
    int _current_program = 0;
    float _sample_rate = 44100.0f;
    int _block_size = 1024;
};

}  // namespace lumo
