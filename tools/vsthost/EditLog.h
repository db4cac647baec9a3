#pragma once

#include "lumo/vst2/Vst2Abi.h"

#include <mutex>
#include <ostream>
#include <vector>

namespace vsthost
{

// The gestures and automation a plug-in sent the host, in order. Plug-ins
// send them from the editor's thread and sometimes from the audio thread, so
// every access is locked; this is the host's side, not the plug-in's.
class EditLog
{
public:
    struct Entry
    {
        lumo::vst2::HostOp op;
        int index;
        float value;
    };

    void add(lumo::vst2::HostOp op, int index, float value);
    std::vector<Entry> get_entries() const;
    // One line per gesture edge; a run of automation of one parameter is one
    // line with its count and last value: "automate 0: 12 times, last 0.5".
    void print(std::ostream& out) const;

private:
    mutable std::mutex _mutex;
    std::vector<Entry> _entries;
};

}  // namespace vsthost
