#include "EditorStressCommand.h"

#include "CommandLine.h"
#include "EditorLeakCheck.h"
#include "LivePlugin.h"
#include "PluginLibrary.h"

#include <memory>
#include <stdexcept>

namespace vsthost
{

int EditorStressCommand::run(const std::vector<std::string>& words, std::ostream& out)
{
    const CommandLine args(words, {"--cycles", "--instances", "--idle-ms"}, {});
    if (args.get_positionals().size() != 1)
    {
        throw std::invalid_argument("usage: vsthost editor-stress PLUGIN [--cycles N] [--instances K] [--idle-ms N]");
    }
    const int cycles = static_cast<int>(args.get_number("--cycles", 50, 1, 100000));
    const int count = static_cast<int>(args.get_number("--instances", 2, 1, 16));
    const int idle_ms = static_cast<int>(args.get_number("--idle-ms", 40, 0, 60000));
    // Keeps the library loaded after the instances are gone, for the class check.
    const PluginLibrary library(args.get_positionals()[0]);
    std::vector<std::unique_ptr<LivePlugin>> instances;
    std::vector<HostedPlugin*> plugins;
    for (int i = 0; i < count; ++i)
    {
        instances.push_back(std::make_unique<LivePlugin>(args.get_positionals()[0]));
        instances.back()->use_audio().start();
        plugins.push_back(&instances.back()->use_plugin());
    }
    EditorLeakCheck::Result result = EditorLeakCheck::run(plugins, library.use_module(), cycles, idle_ms);
    const auto blocks = instances.front()->use_audio().get_blocks();
    instances.clear();
    EditorLeakCheck::check_class(result);
    result.print(out);
    out << "audio ran throughout: " << blocks << " blocks in the first instance\n";
    return result.has_leaked() ? 1 : 0;
}

}  // namespace vsthost
