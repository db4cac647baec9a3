#include "ScreenshotCommand.h"

#include "CommandLine.h"
#include "EditorSession.h"
#include "ImageDiff.h"
#include "LivePlugin.h"
#include "MouseScript.h"
#include "PngFile.h"
#include "RenderCommand.h"

#include <iomanip>
#include <stdexcept>

namespace vsthost
{

namespace
{

const char* const usage =
    "usage: vsthost screenshot PLUGIN [IN.wav] -o editor.png [--set NAME=TEXT] [--norm NAME=VALUE] [--preset FILE]\n"
    "       [--settings-first] [--after-ms N] [--before before.png] [--mouse SCRIPT] [--step-ms N]\n"
    "       [--print-params] [--diff other.png] [--tolerance N] [--tempo BPM] [--rate HZ] [--block FRAMES]";

void print_params(HostedPlugin& plugin, std::ostream& out)
{
    out << std::fixed << std::setprecision(6);
    for (int i = 0; i < plugin.get_num_params(); ++i)
    {
        out << "param " << i << " \"" << plugin.get_param_name(i) << "\" = " << plugin.get_param(i) << " \""
            << plugin.get_param_display(i) << "\"\n";
    }
    out << std::defaultfloat;
}

Image capture_to(EditorSession& session, const std::string& path, std::ostream& out)
{
    const Image image = session.capture();
    if (image.rgba.empty())
    {
        throw std::runtime_error("the editor's window could not be captured");
    }
    PngFile::write(path, image);
    out << "captured " << image.width << "x" << image.height << " to " << path << "\n";
    return image;
}

}  // namespace

int ScreenshotCommand::run(const std::vector<std::string>& words, std::ostream& out)
{
    std::vector<std::string> options = {"-o",      "--set",  "--norm",    "--preset",   "--after-ms", "--before",
                                        "--mouse", "--diff", "--step-ms", "--tolerance"};
    options.insert(options.end(), LivePlugin::live_options.begin(), LivePlugin::live_options.end());
    const CommandLine args(words, options, {"--print-params", "--settings-first"});
    if (!args.has("-o") || args.get_positionals().empty())
    {
        throw std::invalid_argument(usage);
    }
    const int after_ms = static_cast<int>(args.get_number("--after-ms", 300, 0, 600000));
    const int step_ms = static_cast<int>(args.get_number("--step-ms", 30, 0, 60000));
    const int tolerance = static_cast<int>(args.get_number("--tolerance", 0, 0, 255));
    const std::vector<MouseScript::Step> script = MouseScript::parse(args.get_value("--mouse", ""));
    const bool settings_first = args.has("--settings-first");

    LivePlugin live(args);
    HostedPlugin& plugin = live.use_plugin();
    if (settings_first)
    {
        RenderCommand::apply_settings(args, plugin);
    }
    live.use_audio().start();
    EditorSession session(plugin);
    session.open();
    out << "editor " << session.get_width() << "x" << session.get_height()
        << (session.has_plugin_size() ? "" : " (the plug-in gave no size)") << "\n";
    session.run_for(after_ms);
    if (args.has("--before"))
    {
        capture_to(session, args.get_value("--before", ""), out);
    }
    if (!settings_first)
    {
        RenderCommand::apply_settings(args, plugin);
        session.run_for(after_ms);
    }
    if (!script.empty())
    {
        session.play(script, step_ms);
        session.run_for(after_ms);
    }
    const Image image = capture_to(session, args.get_value("-o", ""), out);
    session.print_load(out);
    session.close();
    out << "audio blocks processed during the session: " << live.use_audio().get_blocks() << "\n";
    live.use_audio().stop();
    if (args.has("--print-params"))
    {
        print_params(plugin, out);
        session.use_log().print(out);
    }
    if (args.has("--diff"))
    {
        const std::string other = args.get_value("--diff", "");
        out << "against " << other << ": ";
        ImageDiff(PngFile::read(other), image, tolerance).print(out);
    }
    return 0;
}

}  // namespace vsthost
