#pragma once

#include "basic/ConfKeyMulti.h"
#include "basic/SettingClientInterface.h"
#include "lumo/AudioPort.h"
#include "lumo/DspInterface.h"
#include "lumo/HostDspInterface.h"
#include "lumo/NormalizedParamInterface.h"
#include "lumo/ParamReorder.h"
#include "lumo/SettingDspMixin.h"
#include "lumo/SettingKeys.h"
#include "lumo/TextCopy.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

// Test doubles for the settings side of the framework: an audio side built on
// SettingDspMixin whose setting answers and parameter names a test chooses,
// a host service that offers a reorder map, and a client that counts loads.
namespace zq_test
{

class NamedParam : public lumo::NormalizedParamInterface
{
public:
    explicit NamedParam(const std::string& name) : _name(name) {}
    void get_name(char* text, int capacity) const override { lumo::copy_text(text, capacity, _name.c_str()); }
    void get_unit(char* text, int capacity) const override { lumo::copy_text(text, capacity, ""); }
    int get_type() const override { return 0; }
    bool is_enabled() const override { return true; }
    void update() override {}
    double norm_to_nat(float norm) const override { return norm; }
    double nat_to_norm(double nat) const override { return nat; }
    void get_display(char* text, int capacity, double /*nat*/) const override { lumo::copy_text(text, capacity, ""); }
    double parse_display(const char* /*text*/, bool& /*ok*/) const override { return 0.0; }

private:
    std::string _name;
};

class CountingClient : public basic::SettingClientInterface
{
public:
    int save_settings(basic::ConfKeyMulti& /*root*/) override { return 0; }
    int load_settings(const basic::ConfKeyMulti& root) override
    {
        ++loads;
        keys = root.get_nbr_keys();
        return 0;
    }
    int loads = 0;
    int keys = -1;  // of the last load's top section
};

class ReorderHost : public lumo::HostDspInterface
{
public:
    int get_reserved() override { return 0; }
    double get_setting_num(const char* /*key*/) override { return 0.0; }
    void get_time_info(lumo::TimeInfoRequest& /*request*/) override {}
    bool is_input_connected(int /*port*/, int /*channel*/) override { return true; }
    bool is_output_connected(int /*port*/, int /*channel*/) override { return true; }
    lumo::MidiMgr* use_midi_mgr() override { return nullptr; }
    basic::SettingClientInterface* use_midi_setting_client() override { return nullptr; }
    bool is_free(int /*index*/, int /*level*/) override { return true; }
    bool take(int /*index*/, int /*level*/) override { return true; }
    void release(int /*index*/, int /*level*/) override {}
    bool set_and_report_param(int /*index*/, float /*value*/, int /*level*/) override { return true; }
    void report_param(int /*index*/, float /*value*/) override {}
    bool set_param(int /*index*/, float /*value*/, int /*level*/) override { return true; }
    void set_program(const lumo::ProgramSlot& /*program*/, int /*level*/) override {}
    lumo::ParamReorder& use_param_reorder() override { return reorder; }
    void publish_bank(const lumo::BankManager& /*bank*/) override {}
    int start_bkg_task() override { return -1; }
    void stop_bkg_task() override {}
    std::string get_store_path() override { return std::string(); }

    lumo::ParamReorder reorder;
};

class SettingDspStub : public lumo::SettingDspMixin
{
public:
    SettingDspStub()
    {
        for (const char* name : {"Tempo", "Bof", "Gauloises", "Nuclear Power", "Oignons", "Vin Rouge"})
        {
            params.push_back(std::make_unique<NamedParam>(name));
        }
    }

    // The mixin's set-up, as an effect's init() ends with it.
    int setup() { return setup_setting_mgr(); }

    void init() override {}
    void set_default_state() override {}
    void restore() override {}
    lumo::HostDspInterface* use_host() override { return host; }
    void set_host(lumo::HostDspInterface* h) override { host = h; }
    lumo::GuiInterface* use_gui() override { return nullptr; }
    void set_gui(lumo::GuiInterface* /*gui*/) override {}
    int get_nbr_input_ports() const override { return 1; }
    const lumo::AudioPort& use_input_port(int /*port*/) const override { return _port; }
    int get_nbr_output_ports() const override { return 1; }
    const lumo::AudioPort& use_output_port(int /*port*/) const override { return _port; }
    int get_reserved_a() const override { return 0; }
    int get_reserved_b() const override { return 0; }
    void set_sample_freq(float /*hz*/) override {}
    int get_nbr_param() const override { return static_cast<int>(params.size()); }
    lumo::NormalizedParamInterface& use_param(int index) override { return *params[static_cast<std::size_t>(index)]; }
    void set_program_name(const std::string& /*name*/) override {}
    std::string get_program_name() const override { return std::string(); }
    void set_extra_value(int /*index*/, float /*value*/) override {}
    void take_bank(basic::LockFreeBuffer<lumo::BankManager>& /*buffer*/) override {}
    double get_setting_num(const char* key) const override
    {
        return lumo::is_setting_key(key, lumo::setting_key::plugin_version) ? version : 0.0;
    }
    std::string get_setting_str(const char* key) const override
    {
        const auto it = texts.find(key != nullptr ? key : "");
        return it != texts.end() ? it->second : std::string();
    }
    void reset() override {}
    void set_tempo(float /*bpm*/) override {}
    void on_gui_close() override {}
    void set_reserved_ptr(void* /*ptr*/) override {}
    lumo::BkgInterface* create_bkg_task() override { return nullptr; }
    basic::SerializableInterface* use_chunk_serializer() override { return nullptr; }
    int get_reserved_c() const override { return 0; }
    void set_program_data(const lumo::ProgramSlot& /*program*/) override {}
    void get_program_data(lumo::ProgramSlot& /*program*/) override {}
    void get_param_values(lumo::ProgramSlot& /*program*/) const override {}
    void process_replacing(float* const*, const float* const*, int, int) override {}
    void process_adding(float* const*, const float* const*, int, int) override {}

    std::map<std::string, std::string> texts{{"plugin_name", "Zarquette"}, {"manufacturer", "Velnor"}};
    double version = 1.12;
    std::vector<std::unique_ptr<NamedParam>> params;
    lumo::HostDspInterface* host = nullptr;

private:
    lumo::AudioPort _port{"Input", {"Left input", "Right input"}};
};

}  // namespace zq_test
