#pragma once

#include "lumo/AudioPort.h"
#include "lumo/NotificationFlag.h"
#include "lumo/NotifierInterface.h"
#include "lumo/PluginInternal.h"
#include "lumo/SettingDspMixin.h"
#include "lumo/midi/MidiReceiverInterface.h"
#include "zarquette/BeretCtrl.h"
#include "zarquette/CatArmy.h"

#include <array>
#include <memory>
#include <string>

namespace zarquette
{

class ParamTempo;

// The effect's audio side: plays the embedded recordings (the cat army), feeds
// a share of them with the input into the loop engine, mixes both to the
// outputs, and keeps the daily lunch break of silence.
class ZarquetteDsp : public lumo::MidiReceiverInterface,
                     public lumo::NotifierInterface,
                     public lumo::PluginInternal,
                     public lumo::SettingDspMixin
{
public:
    static constexpr int max_sub_block = 256;
    static constexpr int nbr_params = 6;

    // Loads the recordings; throws std::runtime_error when one is missing.
    ZarquetteDsp();
    ~ZarquetteDsp() override;

    void init() override;
    void set_default_state() override;
    void restore() override;

    lumo::HostDspInterface* use_host() override { return _host; }
    void set_host(lumo::HostDspInterface* host) override;
    lumo::GuiInterface* use_gui() override { return _gui; }
    void set_gui(lumo::GuiInterface* gui) override { _gui = gui; }

    int get_nbr_input_ports() const override { return 1; }
    const lumo::AudioPort& use_input_port(int /*port*/) const override { return _input_port; }
    int get_nbr_output_ports() const override { return 1; }
    const lumo::AudioPort& use_output_port(int /*port*/) const override { return _output_port; }
    int get_reserved_a() const override { return 44000; }
    int get_reserved_b() const override { return 500000; }

    void set_sample_freq(float hz) override;
    int get_nbr_param() const override { return nbr_params; }
    lumo::NormalizedParamInterface& use_param(int index) override;
    void set_program_name(const std::string& name) override { _program_name = name; }
    std::string get_program_name() const override { return _program_name; }
    void set_extra_value(int /*index*/, float /*value*/) override {}
    void take_bank(basic::LockFreeBuffer<lumo::BankManager>& /*buffer*/) override {}

    double get_setting_num(const char* key) const override;
    std::string get_setting_str(const char* key) const override;

    void reset() override;
    void set_tempo(float bpm) override;
    void on_gui_close() override {}
    void set_reserved_ptr(void* /*ptr*/) override {}
    lumo::BkgInterface* create_bkg_task() override { return nullptr; }
    basic::SerializableInterface* use_chunk_serializer() override { return nullptr; }
    int get_reserved_c() const override { return 0; }

    void set_program_data(const lumo::ProgramSlot& program) override;
    void get_program_data(lumo::ProgramSlot& program) override;

    void process_replacing(float* const* outputs, const float* const* inputs, int frames, int reserved) override;
    void process_adding(float* const* outputs, const float* const* inputs, int frames, int reserved) override;

    // The effect's state, for tests.
    float get_cat_level() const { return _cat_level; }
    float get_bof() const { return _bof; }
    const CatArmy& use_cat_army() const { return _cat_army; }
    const BeretCtrl& use_beret_ctrl() const { return _beret_ctrl; }

private:
    struct ParamSlot
    {
        lumo::NormalizedParamInterface* param = nullptr;
        lumo::NotificationFlag flag{true};
    };

    void process_block(float* const* outputs, const float* const* inputs, int frames);
    void update_engines();
    void apply_param(int index, double value);
    void read_input(const float* const* inputs, int offset, int n);
    void render_sub_block(int n);
    void write_output(float* const* outputs, int offset, int n) const;
    bool is_lunch_break() const;
    // Options, and the default controller of every parameter.
    void setup_midi();
    bool host_can_tempo() const;
    ParamTempo& use_tempo_param() const;

    lumo::HostDspInterface* _host = nullptr;
    lumo::GuiInterface* _gui = nullptr;
    lumo::AudioPort _input_port;
    lumo::AudioPort _output_port;
    bool _stereo_in = true;
    bool _stereo_out = true;
    float _sample_freq = 44100.0f;
    std::string _program_name;
    std::atomic<bool> _reset_pending{true};
    std::array<float, max_sub_block> _cat_l{};
    std::array<float, max_sub_block> _cat_r{};
    std::array<float, max_sub_block> _beret_in{};
    std::array<float, max_sub_block> _beret_out{};
    std::array<float, max_sub_block> _beret_tmp{};
    std::array<ParamSlot, nbr_params> _slots;
    CatArmy _cat_army;
    BeretCtrl _beret_ctrl;
    float _cat_level = 0.0f;
    float _bof = 0.0f;
    double _clock_origin = 0.0;
};

}  // namespace zarquette
