#pragma once

#include "WindowProbe.h"

#include <ostream>
#include <vector>

namespace vsthost
{

class HostedPlugin;

// Opens the editors of several instances at once and closes them again, over
// and over, and finds what they leave behind: window objects of the process
// (counted after a first round, which may fill caches of the system and the
// plug-in) and, once the caller has deleted the instances, the plug-in's own
// window class. A plug-in may keep its class while an instance lives (its
// window object may outlast a close); once the host deleted them all while the
// library stays loaded, nothing of it may be left registered.
class EditorLeakCheck
{
public:
    struct Result
    {
        int rounds = 0;
        int editors = 0;
        WindowProbe::Counts before;
        WindowProbe::Counts after;
        WindowProbe::WindowClass window_class;
        // Whether the class is the plug-in's own (else nobody checks it).
        bool own_class = false;
        bool class_checked = false;
        bool class_left = false;

        bool has_grown() const;
        bool has_leaked() const { return has_grown() || class_left; }
        // One line per finding; the last says "result: nothing leaked" or
        // "result: LEAK".
        void print(std::ostream& out) const;
        // The findings in one line, for a report.
        std::string get_summary() const;
    };

    // plugin_module: the module of the plug-in's library, which owns its class.
    // Throws std::runtime_error when an editor does not open.
    static Result run(const std::vector<HostedPlugin*>& plugins, void* plugin_module, int cycles, int idle_ms);
    // After every instance was deleted, with the library still loaded.
    static void check_class(Result& result);
};

}  // namespace vsthost
