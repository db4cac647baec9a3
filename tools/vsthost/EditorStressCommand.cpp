#include "EditorStressCommand.h"

#include "CommandLine.h"
#include "EditorSession.h"
#include "LivePlugin.h"
#include "WindowProbe.h"

#include <memory>
#include <stdexcept>

namespace vsthost
{

namespace
{

const char* const usage = "usage: vsthost editor-stress PLUGIN [--cycles N] [--instances K] [--idle-ms N]";

// Opens every instance's editor, lets them all run, closes them in the order
// they opened; answers the window class of the first editor. The host's
// windows stay: the plug-in's windows are the subject.
WindowProbe::WindowClass run_cycle(std::vector<std::unique_ptr<EditorSession>>& sessions, int idle_ms)
{
    for (auto& session : sessions)
    {
        session->open();
    }
    sessions.back()->run_for(idle_ms);
    const WindowProbe::WindowClass window_class = WindowProbe::get_child_class(sessions.front()->use_window());
    for (auto& session : sessions)
    {
        session->close();
    }
    return window_class;
}

// "12 before, 12 after", or why there is no count; true when it did not grow.
bool report_count(std::ostream& out, const char* what, long before, long after)
{
    out << what << ": ";
    if (before < 0 || after < 0)
    {
        out << "not counted on this system\n";
        return true;
    }
    out << before << " before, " << after << " after\n";
    return after <= before;
}

// True when the plug-in left its own window class registered. Classes of the
// system or of other modules are not the plug-in's to remove.
bool report_class(std::ostream& out, const WindowProbe::WindowClass& window_class, const PluginLibrary& library)
{
    out << "editor window class ";
    if (window_class.name.empty())
    {
        out << "unknown: the editor made no child window\n";
        return false;
    }
    out << "\"" << window_class.name << "\": ";
    if (window_class.module != library.use_module())
    {
        out << "not the plug-in's own, not checked\n";
        return false;
    }
    const bool left = WindowProbe::is_registered(window_class);
    out << (left ? "still registered" : "unregistered") << " after the last window closed\n";
    return left;
}

}  // namespace

int EditorStressCommand::run(const std::vector<std::string>& words, std::ostream& out)
{
    const CommandLine args(words, {"--cycles", "--instances", "--idle-ms"}, {});
    if (args.get_positionals().size() != 1)
    {
        throw std::invalid_argument(usage);
    }
    const int cycles = static_cast<int>(args.get_number("--cycles", 50, 1, 100000));
    const int count = static_cast<int>(args.get_number("--instances", 2, 1, 16));
    const int idle_ms = static_cast<int>(args.get_number("--idle-ms", 40, 0, 60000));
    std::vector<std::unique_ptr<LivePlugin>> instances;
    std::vector<std::unique_ptr<EditorSession>> sessions;
    for (int i = 0; i < count; ++i)
    {
        instances.push_back(std::make_unique<LivePlugin>(args.get_positionals()[0]));
        instances.back()->use_audio().start();
        sessions.push_back(std::make_unique<EditorSession>(instances.back()->use_plugin()));
    }
    // The first round may fill caches of the system and the plug-in: the
    // counts start after it.
    const WindowProbe::WindowClass window_class = run_cycle(sessions, idle_ms);
    const WindowProbe::Counts before = WindowProbe::get_counts();
    for (int i = 0; i < cycles; ++i)
    {
        run_cycle(sessions, idle_ms);
    }
    const WindowProbe::Counts after = WindowProbe::get_counts();
    out << "opened and closed " << count << " editor" << (count == 1 ? "" : "s") << " at once " << cycles + 1
        << " times while audio ran\n";
    if (before.probed)
    {
        out << "this system keeps no object counts: live handles were probed instead\n";
    }
    bool flat = report_count(out, "GDI objects", before.gdi, after.gdi);
    flat = report_count(out, "USER objects", before.user, after.user) && flat;
    const bool class_left = report_class(out, window_class, instances.front()->use_library());
    out << (flat && !class_left ? "result: nothing leaked\n" : "result: LEAK\n");
    return flat && !class_left ? 0 : 1;
}

}  // namespace vsthost
