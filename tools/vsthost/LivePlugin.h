#pragma once

#include "AudioLoop.h"
#include "HostedPlugin.h"
#include "LoopingSource.h"
#include "PluginLibrary.h"

#include <string>
#include <vector>

namespace vsthost
{

class CommandLine;

// A plug-in loaded for a live session, with its audio ready to run in real
// time: a WAV file or the demo song, looping. Takes the positionals PLUGIN
// [IN.wav] and the options of live_options from a command line.
class LivePlugin
{
public:
    explicit LivePlugin(const CommandLine& args);
    // The plug-in alone with the demo song at the default rate.
    explicit LivePlugin(const std::string& path);

    const PluginLibrary& use_library() const { return _library; }
    HostedPlugin& use_plugin() { return _plugin; }
    AudioLoop& use_audio() { return _audio; }

    // The options this class reads: --tempo BPM, --rate HZ (demo song
    // only), --block FRAMES.
    static const std::vector<std::string> live_options;

private:
    LivePlugin(const std::string& path, const std::string& wav, double rate, double tempo, int block);

    PluginLibrary _library;
    HostedPlugin _plugin;
    LoopingSource _source;
    AudioLoop _audio;
};

}  // namespace vsthost
