#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace vsthost
{

class CommandLine;
class HostedPlugin;

// "vsthost render PLUGIN [IN.wav] -o OUT.wav": streams a WAV file, or the
// built-in demo song, through the plug-in block by block as a host plays it.
class RenderCommand
{
public:
    static int run(const std::vector<std::string>& words, std::ostream& out);
    // Applies --preset, then every --set NAME=TEXT and --norm NAME=VALUE.
    static void apply_settings(const CommandLine& args, HostedPlugin& plugin);
};

}  // namespace vsthost
