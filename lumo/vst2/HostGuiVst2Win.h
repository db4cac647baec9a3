#pragma once

#include "lumo/HostCmdMixin.h"
#include "lumo/HostGuiInterface.h"

namespace lumo
{

class Vst2Plugin;

// The editor's services, answered from the VST 2 host or forwarded to the adapter.
class HostGuiVst2Win : public HostCmdMixin<HostGuiInterface>
{
public:
    void set_adapter(Vst2Plugin* adapter);

    void on_reserved() override {}
    double get_setting_num(const char* key) override;
    std::string get_setting_str(const char* key) override;

    void publish_bank(const BankManager& bank) override;

    int resize_window(int width, int height) override;
    std::string get_store_path() override;
    MidiMgr* use_midi_mgr() override;

private:
    Vst2Plugin* _adapter = nullptr;
};

}  // namespace lumo
