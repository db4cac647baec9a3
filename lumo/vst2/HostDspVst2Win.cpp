#include "lumo/vst2/HostDspVst2Win.h"

#include "lumo/GuiInterface.h"
#include "lumo/SettingKeys.h"
#include "lumo/TimeInfoRequest.h"
#include "lumo/midi/MidiMgr.h"
#include "lumo/vst2/Vst2Plugin.h"

namespace lumo
{
namespace
{

const vst2::TimeInfo* ask_time(Vst2Plugin& adapter, std::int32_t mask)
{
    return reinterpret_cast<const vst2::TimeInfo*>(adapter.call_host(vst2::HostOp::get_time, 0, mask));
}

}  // namespace

void HostDspVst2Win::set_adapter(Vst2Plugin* adapter)
{
    _adapter = adapter;
    set_cmd(adapter);
}

double HostDspVst2Win::get_setting_num(const char* key)
{
    if (_adapter == nullptr)
    {
        return 0.0;
    }
    if (is_setting_key(key, setting_key::can_tempo))
    {
        return answer_can_tempo();
    }
    if (is_setting_key(key, setting_key::param_quantization))
    {
        const auto q = _adapter->call_host(vst2::HostOp::get_parameter_quantization);
        return q > 1 ? 1.0 / static_cast<double>(q) : 0.0;
    }
    return 0.0;
}

double HostDspVst2Win::answer_can_tempo()
{
    if (_host_reports_tempo.load(std::memory_order_relaxed))
    {
        return 1.0;
    }
    const vst2::TimeInfo* info = ask_time(*_adapter, vst2::time_info_flags::tempo_valid);
    if (info == nullptr)
    {
        return 0.0;
    }
    const bool valid = (info->flags & vst2::time_info_flags::tempo_valid) != 0;
    if (valid)
    {
        _host_reports_tempo.store(true, std::memory_order_relaxed);
    }
    return valid ? 1.0 : 0.0;
}

void HostDspVst2Win::get_time_info(TimeInfoRequest& request)
{
    if (_adapter == nullptr)
    {
        request.failed = true;
        return;
    }
    const vst2::TimeInfo* info = ask_time(*_adapter, request.want_tempo ? vst2::time_info_flags::tempo_valid : 0);
    if (info == nullptr)
    {
        request.failed = true;
        return;
    }
    request.failed = false;
    if (!request.want_tempo)
    {
        return;
    }
    if ((info->flags & vst2::time_info_flags::tempo_valid) != 0)
    {
        request.tempo = info->tempo;
    }
    else
    {
        request.want_tempo = false;
    }
}

bool HostDspVst2Win::is_pin_connected(int pin, bool output)
{
    // The host answers 0 for a connected pin, and so does a host that does not
    // know the request: both count as connected.
    return _adapter == nullptr || _adapter->call_host(vst2::HostOp::pin_connected, pin, output ? 1 : 0) == 0;
}

bool HostDspVst2Win::is_input_connected(int port, int channel)
{
    return is_pin_connected(_adapter != nullptr ? _adapter->get_input_pin(port, channel) : -1, false);
}

bool HostDspVst2Win::is_output_connected(int port, int channel)
{
    return is_pin_connected(_adapter != nullptr ? _adapter->get_output_pin(port, channel) : -1, true);
}

MidiMgr* HostDspVst2Win::use_midi_mgr()
{
    return _adapter != nullptr ? _adapter->use_midi_mgr() : nullptr;
}

basic::SettingClientInterface* HostDspVst2Win::use_midi_setting_client()
{
    return use_midi_mgr();
}

void HostDspVst2Win::report_param(int index, float value)
{
    _adapter->report_param(index, value);
}

bool HostDspVst2Win::set_param(int index, float value, int level)
{
    return _adapter->set_param(index, value, level);
}

ParamReorder& HostDspVst2Win::use_param_reorder()
{
    return _adapter->use_param_reorder();
}

void HostDspVst2Win::publish_bank(const BankManager& bank)
{
    if (GuiInterface* gui = _adapter->use_gui())
    {
        gui->bank_changed(bank);
    }
    _adapter->publish_bank(bank);
}

int HostDspVst2Win::start_bkg_task()
{
    return _adapter->start_bkg_task();
}

void HostDspVst2Win::stop_bkg_task()
{
    _adapter->stop_bkg_task();
}

std::string HostDspVst2Win::get_store_path()
{
    return _adapter != nullptr ? _adapter->get_store_path() : std::string();
}

}  // namespace lumo
