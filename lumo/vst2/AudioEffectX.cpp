#include "lumo/vst2/AudioEffectX.h"

#include "lumo/vst2/AEffEditor.h"

namespace lumo
{

using vst2::PluginOp;

std::intptr_t AudioEffectX::dispatch_editor_keys(std::int32_t opcode, std::intptr_t value)
{
    AEffEditor* editor = use_editor();
    if (editor == nullptr)
    {
        return 0;
    }
    switch (static_cast<PluginOp>(opcode))
    {
    case PluginOp::edit_key_down:
        return editor->on_key_down();
    case PluginOp::edit_key_up:
        return editor->on_key_up();
    default:
        return editor->set_knob_mode(static_cast<int>(value));
    }
}

std::intptr_t AudioEffectX::dispatch(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                                     float opt)
{
    auto* text = static_cast<char*>(ptr);
    switch (static_cast<PluginOp>(opcode))
    {
    case PluginOp::process_events:
        return process_events(static_cast<vst2::Events*>(ptr));
    case PluginOp::can_be_automated:
        return can_parameter_be_automated(index) ? 1 : 0;
    case PluginOp::string_to_parameter:
        return string_to_parameter(index, text) ? 1 : 0;
    case PluginOp::get_num_program_categories:
        return 1;
    case PluginOp::get_program_name_indexed:
        return get_program_name_indexed(static_cast<int>(value), index, text) ? 1 : 0;
    case PluginOp::copy_program:
        return copy_program(index) ? 1 : 0;
    case PluginOp::get_input_properties:
        return get_input_properties(index, static_cast<vst2::PinProperties*>(ptr)) ? 1 : 0;
    case PluginOp::get_output_properties:
        return get_output_properties(index, static_cast<vst2::PinProperties*>(ptr)) ? 1 : 0;
    case PluginOp::get_plug_category:
        return get_plug_category();
    case PluginOp::set_block_size_and_sample_rate:
        set_block_size(static_cast<int>(value));
        set_sample_rate(opt);
        return 0;
    case PluginOp::get_effect_name:
        return get_effect_name(text) ? 1 : 0;
    case PluginOp::get_vendor_string:
        return get_vendor_string(text) ? 1 : 0;
    case PluginOp::get_product_string:
        return get_product_string(text) ? 1 : 0;
    case PluginOp::get_vendor_version:
        return get_vendor_version();
    case PluginOp::can_do:
        return text != nullptr ? can_do(text) : 0;
    case PluginOp::idle:
        return on_idle();
    case PluginOp::get_parameter_properties:
        return get_parameter_properties(index, static_cast<vst2::ParameterProperties*>(ptr)) ? 1 : 0;
    case PluginOp::get_vst_version:
        return get_vst_version();
    case PluginOp::edit_key_down:
    case PluginOp::edit_key_up:
    case PluginOp::set_edit_knob_mode:
        return dispatch_editor_keys(opcode, value);
    case PluginOp::get_current_midi_program:
        return -1;
    default:
        return AudioEffect::dispatch(opcode, index, value, ptr, opt);
    }
}

}  // namespace lumo
