#pragma once

namespace lumo
{

class ProgramSlot;

// The host adapter's commands: every parameter and program change from any
// source goes through here with its priority level.
class PluginCmdInterface
{
public:
    virtual ~PluginCmdInterface() = default;

    virtual bool is_free(int index, int level) = 0;
    virtual bool take(int index, int level) = 0;
    virtual void release(int index, int level) = 0;
    // false: refused by a source of higher priority; the value is dropped.
    virtual bool set_param(int index, float value, int level) = 0;
    // Tells the host, the MIDI outputs and the gesture logic about a change
    // that was already applied.
    virtual void report_param(int index, float value) = 0;
    virtual bool set_and_report_param(int index, float value, int level) = 0;
    virtual void set_program(const ProgramSlot& program, int level, bool release_after,
                             bool report_to_host) = 0;
};

}  // namespace lumo
