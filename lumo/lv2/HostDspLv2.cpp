#include "lumo/lv2/HostDspLv2.h"

#include "lumo/SettingKeys.h"
#include "lumo/TimeInfoRequest.h"
#include "lumo/lv2/Lv2Plugin.h"
#include "lumo/midi/MidiMgr.h"

namespace lumo
{

HostDspLv2::HostDspLv2(Lv2Plugin& adapter) : HostCmdMixin(&adapter), _adapter(adapter)
{
}

double HostDspLv2::get_setting_num(const char* key)
{
    if (is_setting_key(key, setting_key::can_tempo))
    {
        return _adapter.has_host_tempo() ? 1.0 : 0.0;
    }
    return 0.0;
}

void HostDspLv2::get_time_info(TimeInfoRequest& request)
{
    request.failed = !_adapter.has_host_tempo();
    if (request.failed || !request.want_tempo)
    {
        return;
    }
    request.tempo = _adapter.get_host_tempo();
}

bool HostDspLv2::is_input_connected(int port, int channel)
{
    return _adapter.is_input_connected(port, channel);
}

bool HostDspLv2::is_output_connected(int port, int channel)
{
    return _adapter.is_output_connected(port, channel);
}

MidiMgr* HostDspLv2::use_midi_mgr()
{
    return _adapter.use_midi_mgr();
}

basic::SettingClientInterface* HostDspLv2::use_midi_setting_client()
{
    return _adapter.use_midi_mgr();
}

void HostDspLv2::report_param(int index, float value)
{
    _adapter.report_param(index, value);
}

bool HostDspLv2::set_param(int index, float value, int level)
{
    return _adapter.set_param(index, value, level);
}

ParamReorder& HostDspLv2::use_param_reorder()
{
    return _adapter.use_param_reorder();
}

void HostDspLv2::publish_bank(const BankManager& bank)
{
    _adapter.publish_bank(bank);
}

std::string HostDspLv2::get_store_path()
{
    return _adapter.get_store_path();
}

}  // namespace lumo
