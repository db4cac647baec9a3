#pragma once

#include "lumo/HostCmdMixin.h"
#include "lumo/HostDspInterface.h"

#include <atomic>

namespace lumo
{

class Vst2Plugin;

// The audio side's services, answered from the VST 2 host or forwarded to the
// adapter's parameter commands and bank hand-over.
class HostDspVst2Win : public HostCmdMixin<HostDspInterface>
{
public:
    void set_adapter(Vst2Plugin* adapter);

    int get_reserved() override { return 0; }
    double get_setting_num(const char* key) override;
    void get_time_info(TimeInfoRequest& request) override;
    bool is_input_connected(int port, int channel) override;
    bool is_output_connected(int port, int channel) override;
    MidiMgr* use_midi_mgr() override;
    basic::SettingClientInterface* use_midi_setting_client() override;

    void report_param(int index, float value) override;
    bool set_param(int index, float value, int level) override;

    ParamReorder& use_param_reorder() override;
    void publish_bank(const BankManager& bank) override;
    int start_bkg_task() override;
    void stop_bkg_task() override;
    std::string get_store_path() override;

private:
    double answer_can_tempo();
    bool is_pin_connected(int pin, bool output);

    Vst2Plugin* _adapter = nullptr;
    // Once a host has reported a tempo it is taken to always have one.
    std::atomic<bool> _host_reports_tempo{false};
};

}  // namespace lumo
