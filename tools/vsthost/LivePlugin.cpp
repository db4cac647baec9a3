#include "LivePlugin.h"

#include "CommandLine.h"

#include <stdexcept>

namespace vsthost
{

namespace
{

constexpr double default_rate = 44100.0;
constexpr double default_tempo = 120.0;
constexpr int default_block = 512;

const std::string& get_path(const CommandLine& args)
{
    const auto& pos = args.get_positionals();
    if (pos.empty() || pos.size() > 2)
    {
        throw std::invalid_argument("expected PLUGIN [IN.wav]");
    }
    if (pos.size() == 2 && args.has("--rate"))
    {
        throw std::invalid_argument("--rate sets the demo song's rate; a WAV file brings its own");
    }
    return pos[0];
}

}  // namespace

const std::vector<std::string> LivePlugin::live_options = {"--tempo", "--rate", "--block"};

LivePlugin::LivePlugin(const CommandLine& args)
    : LivePlugin(get_path(args), args.get_positionals().size() == 2 ? args.get_positionals()[1] : std::string(),
                 args.get_number("--rate", default_rate, 8000.0, 768000.0),
                 args.get_number("--tempo", default_tempo, 20.0, 999.0),
                 static_cast<int>(args.get_number("--block", default_block, 16, 8192)))
{
}

LivePlugin::LivePlugin(const std::string& path)
    : LivePlugin(path, std::string(), default_rate, default_tempo, default_block)
{
}

LivePlugin::LivePlugin(const std::string& path, const std::string& wav, double rate, double tempo, int block)
    : _library(path), _plugin(_library), _source(wav, rate, tempo), _audio(_plugin, _source, block)
{
    _plugin.set_sample_rate(_source.get_sample_rate());
    _plugin.set_block_size(block);
    _plugin.use_transport().set_tempo(tempo);
}

}  // namespace vsthost
