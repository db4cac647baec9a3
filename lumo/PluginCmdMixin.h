#pragma once

#include "basic/LockFreeBuffer.h"
#include "lumo/BankManager.h"
#include "lumo/ParamPriorityList.h"
#include "lumo/PluginCmdInterface.h"
#include "lumo/ProgramValueStore.h"

namespace lumo
{

class DspInterface;
class GuiInterface;
class MidiMgr;

// The parameter and program commands as every host adapter carries them out:
// a change is arbitrated by its priority level, kept in the current program,
// handed to the audio side's parameter and shown by the editor; a program's
// values also go out as the MIDI echo. What the host hears of it (automation,
// edit gestures, display updates) differs from one host interface to the
// next and stays with the adapter: its report_param, and the two program
// hooks below.
class PluginCmdMixin : public PluginCmdInterface
{
public:
    bool is_free(int index, int level) override;
    bool take(int index, int level) override;
    void release(int index, int level) override;
    bool set_param(int index, float value, int level) override;
    bool set_and_report_param(int index, float value, int level) override;
    void set_program(const ProgramSlot& program, int level, bool release_after, bool report_to_host) override;

    // The programs the host sees.
    const BankManager& use_bank() const { return _bank; }
    // Any thread but the audio thread: the audio side takes the bank at the
    // start of a later block.
    void publish_bank(const BankManager& bank) { _bank_buffer.publish(bank); }
    // Null when the plug-in takes no MIDI.
    virtual MidiMgr* use_midi_mgr() const = 0;

protected:
    // The audio side (with its parameters registered) and the editor (may be
    // null) stay the adapter's; the bank is copied, as the current bank and
    // into both slots of the hand-over buffer.
    PluginCmdMixin(DspInterface& dsp, GuiInterface* gui, const BankManager& bank);
    // The same with a bank of one program, every value 0, as the VST 2 entry
    // starts.
    PluginCmdMixin(DspInterface& dsp, GuiInterface* gui);

    // The program that set_program replaces and parameter changes keep their
    // values in.
    virtual int get_current_index() const { return 0; }
    // The host hears of a program's value (only when set_program was asked to
    // tell it), and of the end of a program change.
    virtual void report_program_value(int /*index*/, float /*value*/) {}
    virtual void end_program_change() {}

    BankManager& use_bank_to_edit() { return _bank; }
    // Audio thread: the audio side takes a bank published since its last take.
    void take_published_bank();
    // The current program as the audio side holds it: its name and the values
    // that host, editor and MIDI gave it since it was chosen.
    ProgramSlot get_held_program() const;
    // Writes the values parameter changes stored into the current program.
    void keep_program_values();
    // The current program becomes program, and its values the ones that
    // parameter changes go on from.
    void set_current_program(const ProgramSlot& program);

private:
    DspInterface& _dsp;
    GuiInterface* _gui;
    BankManager _bank;
    basic::LockFreeBuffer<BankManager> _bank_buffer;
    ParamPriorityList _priorities;
    ProgramValueStore _program_values;
};

}  // namespace lumo
