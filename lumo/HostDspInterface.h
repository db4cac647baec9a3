#pragma once

#include <string>

namespace basic
{
class SettingClientInterface;
}

namespace lumo
{

class BankManager;
class MidiMgr;
class ParamReorder;
class ProgramSlot;
struct TimeInfoRequest;

// Services of the host adapter for the audio side.
class HostDspInterface
{
public:
    virtual ~HostDspInterface() = default;

    virtual int get_reserved() = 0;
    // "can_tempo", "param_quantization"; 0.0 for anything else.
    virtual double get_setting_num(const char* key) = 0;
    virtual void get_time_info(TimeInfoRequest& request) = 0;
    virtual bool is_input_connected(int port, int channel) = 0;
    virtual bool is_output_connected(int port, int channel) = 0;
    virtual MidiMgr* use_midi_mgr() = 0;
    // The MIDI manager seen as a settings client (null without one), so the
    // settings side can register it without knowing the MIDI layer above it.
    virtual basic::SettingClientInterface* use_midi_setting_client() = 0;

    virtual bool is_free(int index, int level) = 0;
    virtual bool take(int index, int level) = 0;
    virtual void release(int index, int level) = 0;
    virtual bool set_and_report_param(int index, float value, int level) = 0;
    virtual void report_param(int index, float value) = 0;
    virtual bool set_param(int index, float value, int level) = 0;
    virtual void set_program(const ProgramSlot& program, int level) = 0;

    virtual ParamReorder& use_param_reorder() = 0;
    virtual void publish_bank(const BankManager& bank) = 0;
    // 0, or -1 when there is no task or it runs already.
    virtual int start_bkg_task() = 0;
    virtual void stop_bkg_task() = 0;
    virtual std::string get_store_path() = 0;
};

}  // namespace lumo
