#include "lumo/PluginCmdMixin.h"

#include "lumo/DspInterface.h"
#include "lumo/GuiInterface.h"
#include "lumo/NormalizedParamInterface.h"
#include "lumo/midi/MidiMgr.h"
#include "sys/Clock.h"

#include <algorithm>

namespace lumo
{
namespace
{

BankManager make_zero_bank(const DspInterface& dsp)
{
    BankManager bank;
    ProgramSlot program = bank.use_program(0);
    program.set_nbr_values(dsp.get_nbr_param());
    bank.set_program(0, program);
    return bank;
}

}  // namespace

PluginCmdMixin::PluginCmdMixin(DspInterface& dsp, GuiInterface* gui, const BankManager& bank)
    : _dsp(dsp), _gui(gui), _bank(bank), _program_values(dsp.get_nbr_param())
{
    _bank_buffer.init_slots(bank);
    _priorities.resize(dsp.get_nbr_param());
}

PluginCmdMixin::PluginCmdMixin(DspInterface& dsp, GuiInterface* gui)
    : PluginCmdMixin(dsp, gui, make_zero_bank(dsp))
{
}

bool PluginCmdMixin::is_free(int index, int level)
{
    return _priorities.is_free(index, level);
}

bool PluginCmdMixin::take(int index, int level)
{
    return _priorities.take(index, level);
}

void PluginCmdMixin::release(int index, int level)
{
    _priorities.release(index, level);
}

bool PluginCmdMixin::set_param(int index, float value, int level)
{
    if (!_priorities.take(index, level))
    {
        return false;
    }
    // Parameters change on many threads while the main thread reads the bank:
    // the value goes to the store, which joins the bank on the main thread.
    _program_values.store(index, value);
    _dsp.use_param(index).set_norm_value(value);
    if (_gui != nullptr)
    {
        _gui->param_changed(index, value, level);
    }
    return true;
}

bool PluginCmdMixin::set_and_report_param(int index, float value, int level)
{
    const bool accepted = set_param(index, value, level);
    if (accepted)
    {
        report_param(index, value);
    }
    return accepted;
}

void PluginCmdMixin::set_program(const ProgramSlot& program, int level, bool release_after, bool report_to_host)
{
    const double now = sys::get_clock_s();
    const int nbr_values = program.get_nbr_values();
    _bank.set_program(get_current_index(), program);
    _program_values.load(program);
    _dsp.set_program_name(program.get_name());
    _dsp.set_program_data(program);
    MidiMgr* midi = use_midi_mgr();
    const int n = std::min(nbr_values, _dsp.get_nbr_param());
    for (int i = 0; i < n; ++i)
    {
        if (!_priorities.take_at(i, level, now))
        {
            continue;
        }
        const float v = _dsp.use_param(i).get_norm();
        if (_gui != nullptr)
        {
            _gui->param_changed(i, v, level);
        }
        if (midi != nullptr)
        {
            midi->send_param(0, i, v);
        }
        if (report_to_host)
        {
            report_program_value(i, v);
        }
        if (release_after)
        {
            _priorities.release(i, level);
        }
    }
    end_program_change();
}

void PluginCmdMixin::take_published_bank()
{
    if (_bank_buffer.is_pending())
    {
        _dsp.take_bank(_bank_buffer);
    }
}

ProgramSlot PluginCmdMixin::get_held_program() const
{
    ProgramSlot program = _bank.use_program(get_current_index());
    program.set_name(_dsp.get_program_name().c_str());
    _dsp.get_program_data(program);
    return program;
}

void PluginCmdMixin::keep_program_values()
{
    ProgramSlot program = _bank.use_program(get_current_index());
    _program_values.apply_to(program);
    _bank.set_program(get_current_index(), program);
}

void PluginCmdMixin::set_current_program(const ProgramSlot& program)
{
    _bank.set_program(get_current_index(), program);
    _program_values.load(program);
}

}  // namespace lumo
