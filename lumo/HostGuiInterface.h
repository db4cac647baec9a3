#pragma once

#include <string>

namespace lumo
{

class BankManager;
class MidiMgr;
class ProgramSlot;

// Services of the host adapter for the editor.
class HostGuiInterface
{
public:
    virtual ~HostGuiInterface() = default;

    virtual void on_reserved() = 0;
    // "can_resize_window"; 0.0 for anything else.
    virtual double get_setting_num(const char* key) = 0;
    // "interface_standard", "interface_info"; empty for anything else.
    virtual std::string get_setting_str(const char* key) = 0;

    virtual bool is_free(int index, int level) = 0;
    virtual bool take(int index, int level) = 0;
    virtual void release(int index, int level) = 0;
    virtual bool set_and_report_param(int index, float value, int level) = 0;
    virtual void set_program(const ProgramSlot& program, int level) = 0;
    virtual void publish_bank(const BankManager& bank) = 0;

    // 0, or -1 when the host refused.
    virtual int resize_window(int width, int height) = 0;
    virtual std::string get_store_path() = 0;
    virtual MidiMgr* use_midi_mgr() = 0;
};

}  // namespace lumo
