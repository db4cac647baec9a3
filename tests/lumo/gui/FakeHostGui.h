#pragma once

// An editor's host service that writes down what the editor asks, refuses
// levels below a threshold, and (given an audio side) applies accepted values
// to its parameters and echoes them back to the editor as the adapter does.

#include "lumo/DspInterface.h"
#include "lumo/GuiInterface.h"
#include "lumo/HostGuiInterface.h"
#include "lumo/NormalizedParamInterface.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace lumo_test
{

struct HostCall
{
    std::string what;
    int index;
    float value;
    int level;
};

class FakeHostGui : public lumo::HostGuiInterface
{
public:
    void on_reserved() override { calls.push_back({"reserved", -1, 0.0f, 0}); }
    double get_setting_num(const char* key) override
    {
        return std::string(key) == "can_resize_window" ? can_resize : 0.0;
    }
    std::string get_setting_str(const char* /*key*/) override { return {}; }
    bool is_free(int index, int level) override { return log("is_free", index, 0.0f, level); }
    bool take(int index, int level) override { return log("take", index, 0.0f, level); }
    void release(int index, int level) override { log("release", index, 0.0f, level); }
    bool set_and_report_param(int index, float value, int level) override
    {
        if (!log("set", index, value, level))
        {
            return false;
        }
        if (dsp != nullptr)
        {
            dsp->use_param(index).set_norm_value(value);
        }
        if (gui != nullptr)
        {
            gui->param_changed(index, value, level);
        }
        return true;
    }
    void set_program(const lumo::ProgramSlot& /*program*/, int /*level*/) override {}
    void publish_bank(const lumo::BankManager& /*bank*/) override {}
    int resize_window(int /*width*/, int /*height*/) override { return 0; }
    std::string get_store_path() override { return {}; }
    lumo::MidiMgr* use_midi_mgr() override { return midi_mgr; }

    std::vector<HostCall> of(const std::string& what) const
    {
        std::vector<HostCall> found;
        std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
                     [&](const HostCall& c) { return c.what == what; });
        return found;
    }

    std::vector<HostCall> calls;
    int refuse_below = 0;  // levels below are refused
    double can_resize = 0.0;
    // Not owned; null: the host has no MIDI.
    lumo::MidiMgr* midi_mgr = nullptr;
    lumo::DspInterface* dsp = nullptr;
    lumo::GuiInterface* gui = nullptr;

private:
    // Writes the call down and answers whether its level is accepted.
    bool log(const char* what, int index, float value, int level)
    {
        calls.push_back({what, index, value, level});
        return level >= refuse_below;
    }
};

}  // namespace lumo_test
