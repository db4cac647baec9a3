#pragma once

#include "lumo/HostCmdMixin.h"
#include "lumo/HostDspInterface.h"

namespace lumo
{

class Lv2Plugin;

// The audio side's services, answered from what the LV2 host connected and
// sent, or forwarded to the adapter's parameter commands.
class HostDspLv2 : public HostCmdMixin<HostDspInterface>
{
public:
    explicit HostDspLv2(Lv2Plugin& adapter);

    int get_reserved() override { return 0; }
    // "can_tempo": 1.0 once the host has sent a tempo.
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
    // LV2 plug-ins have no background thread of their own.
    int start_bkg_task() override { return -1; }
    void stop_bkg_task() override {}
    std::string get_store_path() override;

private:
    Lv2Plugin& _adapter;
};

}  // namespace lumo
