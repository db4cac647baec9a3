#pragma once

#include "lumo/AudioPort.h"
#include "lumo/PluginInternal.h"
#include "lumo/SettingDspMixin.h"

#include <string>
#include <vector>

namespace lumo
{

// The audio side as an editor sees it when the effect runs in another
// process (an LV2 editor talks to its plug-in through ports only): the
// effect's name, audio ports and parameters, built from the same description
// as the effect, holding the values the editor is told of. It renders
// nothing and asks the host for nothing.
class DspMirror : public PluginInternal, public SettingDspMixin
{
public:
    struct Shape
    {
        std::string plugin_name;
        std::vector<AudioPort> inputs;
        std::vector<AudioPort> outputs;
        // Registers the effect's parameters, in internal-index order.
        void (*add_params)(PluginInternal& effect);
    };

    explicit DspMirror(Shape shape);
    ~DspMirror() override;
    DspMirror(const DspMirror&) = delete;
    DspMirror& operator=(const DspMirror&) = delete;

    // Registers the parameters, at their defaults.
    void init() override;
    void set_default_state() override {}
    void restore() override { clear_registry(); }

    // Owned, as the audio side owns its host service.
    HostDspInterface* use_host() override { return _host; }
    void set_host(HostDspInterface* host) override;
    GuiInterface* use_gui() override { return _gui; }
    void set_gui(GuiInterface* gui) override { _gui = gui; }

    int get_nbr_input_ports() const override { return static_cast<int>(_shape.inputs.size()); }
    const AudioPort& use_input_port(int port) const override;
    int get_nbr_output_ports() const override { return static_cast<int>(_shape.outputs.size()); }
    const AudioPort& use_output_port(int port) const override;
    int get_reserved_a() const override { return 0; }
    int get_reserved_b() const override { return 0; }

    void set_sample_freq(float /*hz*/) override {}
    int get_nbr_param() const override { return get_nbr_registered_params(); }
    NormalizedParamInterface& use_param(int index) override { return use_registered_param(index); }
    void set_program_name(const std::string& name) override { _program_name = name; }
    std::string get_program_name() const override { return _program_name; }
    void set_extra_value(int /*index*/, float /*value*/) override {}
    void take_bank(basic::LockFreeBuffer<BankManager>& /*buffer*/) override {}

    // "plugin_name"; nothing else.
    double get_setting_num(const char* /*key*/) const override { return 0.0; }
    std::string get_setting_str(const char* key) const override;

    void reset() override {}
    void set_tempo(float /*bpm*/) override {}
    void on_gui_close() override {}
    void set_reserved_ptr(void* /*ptr*/) override {}
    BkgInterface* create_bkg_task() override { return nullptr; }
    basic::SerializableInterface* use_chunk_serializer() override { return nullptr; }
    int get_reserved_c() const override { return 0; }

    void set_program_data(const ProgramSlot& program) override;
    void get_program_data(ProgramSlot& program) override { get_param_values(program); }

    void process_replacing(float* const* outputs, const float* const* inputs, int frames, int reserved) override;
    void process_adding(float* const* outputs, const float* const* inputs, int frames, int reserved) override;

private:
    Shape _shape;
    HostDspInterface* _host = nullptr;
    GuiInterface* _gui = nullptr;
    std::string _program_name;
};

}  // namespace lumo
