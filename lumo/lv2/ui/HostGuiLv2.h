#pragma once

#include "lumo/HostCmdMixin.h"
#include "lumo/HostGuiInterface.h"

namespace lumo
{

class Lv2Editor;

// The editor's services in an LV2 editor: parameter commands go to the
// editor's own command core (and from there to the host's ports), the MIDI
// manager is the mirror of the audio side's.
class HostGuiLv2 : public HostCmdMixin<HostGuiInterface>
{
public:
    explicit HostGuiLv2(Lv2Editor& editor);

    void on_reserved() override {}
    // The editor has the size the user's zoom gives it: the host cannot
    // resize it ("can_resize_window" is 0).
    double get_setting_num(const char* /*key*/) override { return 0.0; }
    // "interface_standard", "interface_info".
    std::string get_setting_str(const char* key) override;
    // The bank is the audio side's, which the editor reaches through ports
    // only: there is none here to publish to.
    void publish_bank(const BankManager& /*bank*/) override {}
    int resize_window(int width, int height) override;
    // The editor keeps no files: whatever the plug-in stores, its audio side does.
    std::string get_store_path() override { return std::string(); }
    MidiMgr* use_midi_mgr() override;

private:
    Lv2Editor& _editor;
};

}  // namespace lumo
