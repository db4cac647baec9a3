#include "lumo/lv2/ui/HostGuiLv2.h"

#include "lumo/SettingKeys.h"
#include "lumo/lv2/ui/Lv2Editor.h"

namespace lumo
{

HostGuiLv2::HostGuiLv2(Lv2Editor& editor) : HostCmdMixin(&editor), _editor(editor)
{
}

std::string HostGuiLv2::get_setting_str(const char* key)
{
    if (is_setting_key(key, setting_key::interface_standard))
    {
        return "LV2";
    }
    if (is_setting_key(key, setting_key::interface_info))
    {
        return "LV2 is an open standard for audio plug-ins.\nhttps://lv2plug.in";
    }
    return std::string();
}

int HostGuiLv2::resize_window(int width, int height)
{
    return _editor.resize(width, height);
}

MidiMgr* HostGuiLv2::use_midi_mgr()
{
    return _editor.use_midi_mgr();
}

}  // namespace lumo
