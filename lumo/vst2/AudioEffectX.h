#pragma once

#include "lumo/vst2/AudioEffect.h"

namespace lumo
{

// The requests of interface version 2 on top of AudioEffect: events, texts,
// pins, categories, can-do, parameter properties. Defaults answer "not
// supported" the way hosts expect.
class AudioEffectX : public AudioEffect
{
public:
    using AudioEffect::AudioEffect;

    std::intptr_t dispatch(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                           float opt) override;

    // 1: the events were taken.
    virtual int process_events(vst2::Events* /*events*/) { return 0; }
    virtual bool can_parameter_be_automated(int /*index*/) { return true; }
    virtual bool string_to_parameter(int /*index*/, const char* /*text*/) { return false; }
    virtual bool get_program_name_indexed(int /*category*/, int /*index*/, char* /*text*/) { return false; }
    virtual bool copy_program(int /*destination*/) { return false; }
    virtual bool get_input_properties(int /*pin*/, vst2::PinProperties* /*props*/) { return false; }
    virtual bool get_output_properties(int /*pin*/, vst2::PinProperties* /*props*/) { return false; }
    virtual int get_plug_category() { return 0; }
    virtual bool get_effect_name(char* /*text*/) { return false; }
    virtual bool get_vendor_string(char* /*text*/) { return false; }
    virtual bool get_product_string(char* /*text*/) { return false; }
    virtual int get_vendor_version() { return 0; }
    // 1 yes, -1 no, 0 don't know.
    virtual int can_do(const char* /*text*/) { return 0; }
    virtual int on_idle() { return 0; }
    virtual bool get_parameter_properties(int /*index*/, vst2::ParameterProperties* /*props*/) { return false; }
    virtual int get_vst_version() { return 2200; }

private:
    std::intptr_t dispatch_editor_keys(std::int32_t opcode, std::intptr_t value);
};

}  // namespace lumo
