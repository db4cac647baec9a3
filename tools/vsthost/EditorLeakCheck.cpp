#include "EditorLeakCheck.h"

#include "EditorSession.h"

#include <memory>
#include <sstream>

namespace vsthost
{

namespace
{

// Opens every editor, lets them all run, closes them in the order they
// opened; answers the window class of the first. The host's windows stay:
// the plug-in's windows are the subject.
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

bool grew(long before, long after)
{
    return before >= 0 && after > before;
}

void print_count(std::ostream& out, const char* what, long before, long after)
{
    out << what << ": ";
    if (before < 0 || after < 0)
    {
        out << "not counted on this system\n";
        return;
    }
    out << before << " before, " << after << " after\n";
}

}  // namespace

bool EditorLeakCheck::Result::has_grown() const
{
    return grew(before.gdi, after.gdi) || grew(before.user, after.user);
}

void EditorLeakCheck::Result::print(std::ostream& out) const
{
    out << "opened and closed " << editors << " editor" << (editors == 1 ? "" : "s") << " at once " << rounds
        << " times\n";
    if (before.probed)
    {
        out << "this system keeps no object counts: live handles were probed instead\n";
    }
    print_count(out, before.gdi_name, before.gdi, after.gdi);
    print_count(out, before.user_name, before.user, after.user);
    out << "editor window class ";
    if (window_class.name.empty() && !WindowProbe::has_window_classes())
    {
        out << "none: this window system has no classes\n";
    }
    else if (window_class.name.empty())
    {
        out << "unknown: the editor made no child window\n";
    }
    else if (!own_class)
    {
        out << "\"" << window_class.name << "\": not the plug-in's own, not checked\n";
    }
    else if (!class_checked)
    {
        out << "\"" << window_class.name << "\": not checked while instances live\n";
    }
    else
    {
        out << "\"" << window_class.name << "\": " << (class_left ? "still registered" : "unregistered")
            << " after the last instance was deleted\n";
    }
    out << (has_leaked() ? "result: LEAK\n" : "result: nothing leaked\n");
}

std::string EditorLeakCheck::Result::get_summary() const
{
    std::ostringstream out;
    out << rounds << " rounds of " << editors << " editors: " << before.gdi_tag << " " << before.gdi << " -> "
        << after.gdi << ", " << before.user_tag << " " << before.user << " -> " << after.user << (class_left ? ", window class left registered" : "");
    return out.str();
}

EditorLeakCheck::Result EditorLeakCheck::run(const std::vector<HostedPlugin*>& plugins, void* plugin_module,
                                             int cycles, int idle_ms)
{
    std::vector<std::unique_ptr<EditorSession>> sessions;
    for (HostedPlugin* plugin : plugins)
    {
        sessions.push_back(std::make_unique<EditorSession>(*plugin));
    }
    Result result;
    result.editors = static_cast<int>(plugins.size());
    result.rounds = cycles + 1;
    result.window_class = run_cycle(sessions, idle_ms);
    result.before = WindowProbe::get_counts();
    for (int i = 0; i < cycles; ++i)
    {
        run_cycle(sessions, idle_ms);
    }
    result.after = WindowProbe::get_counts();
    result.own_class = !result.window_class.name.empty() && result.window_class.module == plugin_module;
    return result;
}

void EditorLeakCheck::check_class(Result& result)
{
    result.class_checked = result.own_class;
    result.class_left = result.own_class && WindowProbe::is_registered(result.window_class);
}

}  // namespace vsthost
