#include "EditorCommand.h"

#include "CommandLine.h"
#include "EditorSession.h"
#include "LivePlugin.h"
#include "RenderCommand.h"

#include <stdexcept>

namespace vsthost
{

namespace
{

const char* const usage =
    "usage: vsthost editor PLUGIN [IN.wav] [--set NAME=TEXT] [--norm NAME=VALUE] [--preset FILE] [--seconds S]\n"
    "       [--tempo BPM] [--rate HZ] [--block FRAMES]";

// The longest a session may be limited to: a day.
constexpr double max_seconds = 86400.0;

}  // namespace

int EditorCommand::run(const std::vector<std::string>& words, std::ostream& out)
{
    std::vector<std::string> options = {"--set", "--norm", "--preset", "--seconds"};
    options.insert(options.end(), LivePlugin::live_options.begin(), LivePlugin::live_options.end());
    const CommandLine args(words, options, {});
    if (args.get_positionals().empty())
    {
        throw std::invalid_argument(usage);
    }
    const double seconds = args.get_number("--seconds", max_seconds, 0.0, max_seconds);
    LivePlugin live(args);
    HostedPlugin& plugin = live.use_plugin();
    RenderCommand::apply_settings(args, plugin);
    live.use_audio().start();
    EditorSession session(plugin);
    session.open();
    out << "editor " << session.get_width() << "x" << session.get_height() << " open; close its window to stop"
        << std::endl;
    const bool closed_by_user = !session.run_for(static_cast<int>(seconds * 1000.0));
    session.print_load(out);
    session.close();
    live.use_audio().stop();
    out << "editor closed " << (closed_by_user ? "by the user" : "after the time given") << "; "
        << live.use_audio().get_blocks() << " audio blocks processed\n";
    return 0;
}

}  // namespace vsthost
