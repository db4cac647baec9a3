#pragma once

#include "lumo/PluginCmdInterface.h"

namespace lumo
{

class ProgramSlot;

// The part of a host service (HostDspInterface for the audio side,
// HostGuiInterface for the editor) that hands the side's parameter and
// program commands to the adapter's command interface unchanged.
template <class HostInterface>
class HostCmdMixin : public HostInterface
{
public:
    bool is_free(int index, int level) override { return _cmd->is_free(index, level); }
    bool take(int index, int level) override { return _cmd->take(index, level); }
    void release(int index, int level) override { _cmd->release(index, level); }
    bool set_and_report_param(int index, float value, int level) override
    {
        return _cmd->set_and_report_param(index, value, level);
    }
    // A program chosen from inside the plug-in: the host hears of its values,
    // and the parameters stay held at the level for the hold time.
    void set_program(const ProgramSlot& program, int level) override
    {
        _cmd->set_program(program, level, false, true);
    }

protected:
    explicit HostCmdMixin(PluginCmdInterface* cmd = nullptr) : _cmd(cmd) {}
    // Before the side sends its first command.
    void set_cmd(PluginCmdInterface* cmd) { _cmd = cmd; }
    PluginCmdInterface& use_cmd() const { return *_cmd; }

private:
    PluginCmdInterface* _cmd;
};

}  // namespace lumo
