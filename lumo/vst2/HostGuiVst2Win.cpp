#include "lumo/vst2/HostGuiVst2Win.h"

#include "lumo/SettingKeys.h"
#include "lumo/vst2/Vst2Plugin.h"

#include <cmath>

namespace lumo
{

void HostGuiVst2Win::set_adapter(Vst2Plugin* adapter)
{
    _adapter = adapter;
    set_cmd(adapter);
}

double HostGuiVst2Win::get_setting_num(const char* key)
{
    if (_adapter == nullptr || !is_setting_key(key, setting_key::can_resize_window))
    {
        return 0.0;
    }
    static char size_window[] = "sizeWindow";
    return _adapter->call_host(vst2::HostOp::can_do, 0, 0, size_window) > 0 ? 1.0 : 0.0;
}

std::string HostGuiVst2Win::get_setting_str(const char* key)
{
    if (is_setting_key(key, setting_key::interface_standard))
    {
        return "VST 2.0";
    }
    if (is_setting_key(key, setting_key::interface_info))
    {
        return "VST is a trademark of Steinberg Media AG.\nhttps://www.steinberg.net";
    }
    return std::string();
}

void HostGuiVst2Win::publish_bank(const BankManager& bank)
{
    _adapter->publish_bank(bank);
}

int HostGuiVst2Win::resize_window(int width, int height)
{
    if (std::fabs(get_setting_num(setting_key::can_resize_window)) >= 1e-9
        && _adapter->call_host(vst2::HostOp::size_window, width * _adapter->get_editor_zoom(),
                               height * _adapter->get_editor_zoom()) == 0)
    {
        return -1;
    }
    _adapter->resize_editor_window(width, height);
    return 0;
}

std::string HostGuiVst2Win::get_store_path()
{
    return _adapter != nullptr ? _adapter->get_store_path() : std::string();
}

MidiMgr* HostGuiVst2Win::use_midi_mgr()
{
    return _adapter != nullptr ? _adapter->use_midi_mgr() : nullptr;
}

}  // namespace lumo
