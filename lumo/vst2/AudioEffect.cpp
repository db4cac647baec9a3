#include "lumo/vst2/AudioEffect.h"

#include "lumo/HostCallGuard.h"
#include "lumo/vst2/AEffEditor.h"
#include "sys/FpuModeGuard.h"

namespace lumo
{
namespace
{

using vst2::PluginOp;

constexpr std::int32_t op(PluginOp o)
{
    return static_cast<std::int32_t>(o);
}

void clear_text(char* text)
{
    if (text != nullptr)
    {
        text[0] = '\0';
    }
}

template <class Result, class Call>
Result guarded(vst2::AEffect* e, sys::FpuModeGuard::Denormals denormals, Result neutral, Call call)
{
    return call_from_host(AudioEffect::from_aeffect(e), denormals, neutral, call);
}

constexpr auto keep = sys::FpuModeGuard::Denormals::keep;
constexpr auto flush = sys::FpuModeGuard::Denormals::flush;

std::intptr_t LUMO_VST2_CALL dispatcher_entry(vst2::AEffect* e, std::int32_t opcode, std::int32_t index,
                                              std::intptr_t value, void* ptr, float opt)
{
    const std::intptr_t answer = guarded<std::intptr_t>(
        e, keep, 0, [&](AudioEffect& self) { return self.dispatch(opcode, index, value, ptr, opt); });
    if (opcode == op(PluginOp::close) && e != nullptr)
    {
        // The host is done with the plug-in: it goes with the close request.
        delete AudioEffect::from_aeffect(e);
    }
    return answer;
}

void LUMO_VST2_CALL process_entry(vst2::AEffect* e, float** inputs, float** outputs, std::int32_t frames)
{
    guarded<bool>(e, flush, false, [&](AudioEffect& self) {
        self.process(inputs, outputs, frames);
        return true;
    });
}

void LUMO_VST2_CALL process_replacing_entry(vst2::AEffect* e, float** inputs, float** outputs,
                                            std::int32_t frames)
{
    guarded<bool>(e, flush, false, [&](AudioEffect& self) {
        self.process_replacing(inputs, outputs, frames);
        return true;
    });
}

void LUMO_VST2_CALL set_parameter_entry(vst2::AEffect* e, std::int32_t index, float value)
{
    guarded<bool>(e, keep, false, [&](AudioEffect& self) {
        self.set_parameter(index, value);
        return true;
    });
}

float LUMO_VST2_CALL get_parameter_entry(vst2::AEffect* e, std::int32_t index)
{
    return guarded<float>(e, keep, 0.0f, [&](AudioEffect& self) { return self.get_parameter(index); });
}

}  // namespace

AudioEffect::AudioEffect(vst2::HostCallback host, int nbr_programs, int nbr_params) : _host(host)
{
    _aeffect.magic = vst2::effect_magic;
    _aeffect.dispatcher = &dispatcher_entry;
    _aeffect.process = &process_entry;
    _aeffect.set_parameter = &set_parameter_entry;
    _aeffect.get_parameter = &get_parameter_entry;
    _aeffect.process_replacing = &process_replacing_entry;
    _aeffect.num_programs = nbr_programs;
    _aeffect.num_params = nbr_params;
    _aeffect.num_inputs = 1;
    _aeffect.num_outputs = 2;
    _aeffect.io_ratio = 1.0f;
    _aeffect.object = this;
    _aeffect.version = 1;
}

AudioEffect::~AudioEffect()
{
    delete _editor;
}

AudioEffect* AudioEffect::from_aeffect(vst2::AEffect* effect)
{
    return effect != nullptr ? static_cast<AudioEffect*>(effect->object) : nullptr;
}

std::intptr_t AudioEffect::call_host(vst2::HostOp op, std::int32_t index, std::intptr_t value, void* ptr,
                                     float opt)
{
    if (_host == nullptr)
    {
        return 0;
    }
    // The version request is the one a host answers without a record.
    vst2::AEffect* record = op == vst2::HostOp::version ? nullptr : &_aeffect;
    return _host(record, static_cast<std::int32_t>(op), index, value, ptr, opt);
}

void AudioEffect::set_flag(std::int32_t flag, bool on)
{
    _aeffect.flags = on ? (_aeffect.flags | flag) : (_aeffect.flags & ~flag);
}

void AudioEffect::set_editor(AEffEditor* editor)
{
    delete _editor;
    _editor = editor;
    set_flag(vst2::effect_flags::has_editor, editor != nullptr);
}

void AudioEffect::set_parameter(int /*index*/, float /*value*/)
{
}

float AudioEffect::get_parameter(int /*index*/)
{
    return 0.0f;
}

void AudioEffect::process(float** /*inputs*/, float** /*outputs*/, int /*frames*/)
{
}

void AudioEffect::process_replacing(float** /*inputs*/, float** /*outputs*/, int /*frames*/)
{
}

void AudioEffect::get_program_name(char* name)
{
    clear_text(name);
}

void AudioEffect::get_parameter_label(int /*index*/, char* text)
{
    clear_text(text);
}

void AudioEffect::get_parameter_display(int /*index*/, char* text)
{
    clear_text(text);
}

void AudioEffect::get_parameter_name(int /*index*/, char* text)
{
    clear_text(text);
}

int AudioEffect::get_chunk(void** data, bool /*is_preset*/)
{
    if (data != nullptr)
    {
        *data = nullptr;
    }
    return 0;
}

int AudioEffect::set_chunk(void* /*data*/, int /*byte_size*/, bool /*is_preset*/)
{
    return 0;
}

std::intptr_t AudioEffect::dispatch_editor(std::int32_t opcode, void* ptr)
{
    if (_editor == nullptr)
    {
        return 0;
    }
    switch (static_cast<PluginOp>(opcode))
    {
    case PluginOp::edit_get_rect:
        return _editor->get_rect(static_cast<vst2::ERect**>(ptr)) ? 1 : 0;
    case PluginOp::edit_open:
        return _editor->open(ptr) ? 1 : 0;
    case PluginOp::edit_close:
        _editor->close();
        return 0;
    case PluginOp::edit_idle:
        _editor->idle();
        return 0;
    default:
        return 0;
    }
}

std::intptr_t AudioEffect::dispatch(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                                    float opt)
{
    auto* text = static_cast<char*>(ptr);
    switch (static_cast<PluginOp>(opcode))
    {
    case PluginOp::open:
        open();
        return 0;
    case PluginOp::close:
        close();
        return 0;
    case PluginOp::set_program:
        set_program_index(static_cast<int>(value));
        return 0;
    case PluginOp::get_program:
        return _current_program;
    case PluginOp::set_program_name:
        set_program_name(text);
        return 0;
    case PluginOp::get_program_name:
        get_program_name(text);
        return 0;
    case PluginOp::get_param_label:
        get_parameter_label(index, text);
        return 0;
    case PluginOp::get_param_display:
        get_parameter_display(index, text);
        return 0;
    case PluginOp::get_param_name:
        get_parameter_name(index, text);
        return 0;
    case PluginOp::set_sample_rate:
        set_sample_rate(opt);
        return 0;
    case PluginOp::set_block_size:
        set_block_size(static_cast<int>(value));
        return 0;
    case PluginOp::mains_changed:
        if (value == 0)
        {
            suspend();
        }
        else
        {
            resume();
        }
        return 0;
    case PluginOp::edit_get_rect:
    case PluginOp::edit_open:
    case PluginOp::edit_close:
    case PluginOp::edit_idle:
        return dispatch_editor(opcode, ptr);
    case PluginOp::identify:
        return vst2::identify_answer;
    case PluginOp::get_chunk:
        return get_chunk(static_cast<void**>(ptr), index != 0);
    case PluginOp::set_chunk:
        return set_chunk(ptr, static_cast<int>(value), index != 0);
    default:
        return 0;
    }
}

}  // namespace lumo
