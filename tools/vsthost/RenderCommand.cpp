#include "RenderCommand.h"

#include "AudioBuffers.h"
#include "CommandLine.h"
#include "DemoSong.h"
#include "FxExchange.h"
#include "HostedPlugin.h"
#include "PluginLibrary.h"
#include "ProgressBar.h"
#include "RenderMidi.h"
#include "Terminal.h"
#include "WavReader.h"
#include "WavWriter.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <memory>
#include <stdexcept>

namespace vsthost
{

namespace
{

const char* const usage =
    "usage: vsthost render PLUGIN [IN.wav] -o OUT.wav [--set NAME=TEXT] [--norm NAME=VALUE] [--preset FILE]\n"
    "       [--tempo BPM] [--rate HZ] [--block FRAMES] [--length SECONDS] [--pcm16]\n"
    "       [--midi-in FILE.mid] [--midi-out FILE.mid] [--automation-out FILE.csv]";

constexpr double max_length = 3600.0;  // seconds

// Where the dry signal comes from: a WAV file or the demo song.
class Source
{
public:
    Source(const std::string& path, double rate, double tempo)
    {
        if (path.empty())
        {
            _demo = std::make_unique<DemoSong>(rate, tempo);
            return;
        }
        _file.open(path, std::ios::binary);
        if (!_file)
        {
            throw std::runtime_error("cannot open " + path);
        }
        _wav = std::make_unique<WavReader>(_file);
    }

    int get_channels() const { return _wav ? _wav->get_channels() : 2; }
    std::uint64_t get_frame_count() const { return _wav ? _wav->get_frame_count() : _demo->get_frame_count(); }
    double get_rate(double fallback) const { return _wav ? _wav->get_sample_rate() : fallback; }

    // Fills frames of every channel, with silence after the end.
    void read(AudioBuffers& buffers, std::size_t frames)
    {
        buffers.clear();
        if (_wav)
        {
            _wav->read(buffers.use_pointers(), frames);
        }
        else
        {
            _demo->render(buffers.use_channel(0), buffers.use_channel(1), frames);
        }
    }

private:
    std::ifstream _file;
    std::unique_ptr<WavReader> _wav;
    std::unique_ptr<DemoSong> _demo;
};

float find_peak(AudioBuffers& buffers, int channels, std::size_t frames, float peak)
{
    for (int c = 0; c < channels; ++c)
    {
        for (std::size_t i = 0; i < frames; ++i)
        {
            peak = std::max(peak, std::fabs(buffers.use_channel(c)[i]));
        }
    }
    return peak;
}

}  // namespace

void RenderCommand::apply_settings(const CommandLine& args, HostedPlugin& plugin)
{
    if (args.has("--preset"))
    {
        const std::string path = args.get_value("--preset", "");
        const int result = FxExchange::apply(plugin, FxExchange::load(path));
        if (result != 0)
        {
            throw std::runtime_error(path + ": " + FxExchange::get_error_text(result));
        }
    }
    for (const bool normalized : {false, true})
    {
        for (const std::string& text : args.get_values(normalized ? "--norm" : "--set"))
        {
            std::string name;
            std::string value;
            if (!CommandLine::split_assignment(text, name, value))
            {
                throw std::invalid_argument("expected NAME=VALUE, got '" + text + "'");
            }
            const int index = plugin.find_param(name);
            if (index < 0)
            {
                throw std::invalid_argument("the plug-in has no parameter '" + name + "'");
            }
            if (normalized)
            {
                plugin.set_param(index, static_cast<float>(CommandLine::parse_number("--norm", value, 0.0, 1.0)));
            }
            else if (!plugin.set_param_text(index, value))
            {
                throw std::invalid_argument("the plug-in does not take '" + value + "' for '" + name + "'");
            }
        }
    }
}

int RenderCommand::run(const std::vector<std::string>& words, std::ostream& out)
{
    const CommandLine args(words,
                           {"-o", "--set", "--norm", "--preset", "--tempo", "--rate", "--block", "--length",
                            "--midi-in", "--midi-out", "--automation-out"},
                           {"--pcm16"});
    const auto& pos = args.get_positionals();
    if (pos.empty() || pos.size() > 2 || !args.has("-o"))
    {
        throw std::invalid_argument(usage);
    }
    const double tempo = args.get_number("--tempo", 120.0, 20.0, 999.0);
    Source source(pos.size() == 2 ? pos[1] : std::string(), args.get_number("--rate", 44100.0, 8000.0, 768000.0),
                  tempo);
    if (pos.size() == 2 && args.has("--rate"))
    {
        throw std::invalid_argument("--rate sets the demo song's rate; a WAV file brings its own");
    }
    const double rate = source.get_rate(args.get_number("--rate", 44100.0, 8000.0, 768000.0));
    const auto block = static_cast<std::size_t>(args.get_number("--block", 512, 1, 65536));

    PluginLibrary library(pos[0]);
    HostedPlugin plugin(library);
    plugin.set_sample_rate(rate);
    plugin.set_block_size(static_cast<int>(block));
    plugin.use_transport().set_tempo(tempo);
    apply_settings(args, plugin);
    RenderMidi midi(args, plugin, rate, static_cast<std::int32_t>(block), tempo);
    // Without a length the render also plays the whole MIDI file, up to the
    // longest length the option takes.
    const auto longest = static_cast<std::uint64_t>(max_length * rate);
    const std::uint64_t total =
        args.has("--length") ? static_cast<std::uint64_t>(args.get_number("--length", 0, 0, max_length) * rate)
                             : std::max(source.get_frame_count(), std::min(midi.get_end_frame(), longest));

    const std::string out_path = args.get_value("-o", "");
    std::ofstream file(out_path, std::ios::binary | std::ios::trunc);
    if (!file)
    {
        throw std::runtime_error("cannot write " + out_path);
    }
    const int out_channels = std::max(plugin.get_num_outputs(), 1);
    const auto format = args.has("--pcm16") ? WavWriter::Format::pcm16 : WavWriter::Format::float32;
    WavWriter writer(file, out_channels, static_cast<int>(std::lround(rate)), format);
    AudioBuffers dry(source.get_channels(), block);
    AudioBuffers in(plugin.get_num_inputs(), block);
    AudioBuffers wet(plugin.get_num_outputs(), block);
    ProgressBar progress(out, is_stdout_terminal());
    float peak = 0.0f;

    plugin.resume();
    for (std::uint64_t done = 0; done < total;)
    {
        const auto frames = static_cast<std::size_t>(std::min<std::uint64_t>(block, total - done));
        source.read(dry, frames);
        // A mono file feeds every input; extra file channels are dropped.
        for (int c = 0; c < plugin.get_num_inputs(); ++c)
        {
            std::copy_n(dry.use_channel(c % dry.get_channels()), frames, in.use_channel(c));
        }
        midi.before_block(done, static_cast<std::int32_t>(frames));
        plugin.process(in.use_pointers(), wet.use_pointers(), static_cast<std::int32_t>(frames));
        midi.after_block(done);
        writer.write(wet.use_pointers(), frames);
        peak = find_peak(wet, plugin.get_num_outputs(), frames, peak);
        done += frames;
        progress.update(static_cast<double>(done) / static_cast<double>(total));
    }
    plugin.suspend();
    progress.finish();
    if (!writer.finish())
    {
        throw std::runtime_error("cannot write " + out_path);
    }
    out << "rendered " << total << " frames (" << static_cast<double>(total) / rate << " s) at " << rate
        << " Hz in blocks of " << block << " to " << out_path << " ("
        << (format == WavWriter::Format::pcm16 ? "16-bit PCM" : "32-bit float") << ", " << out_channels
        << " channels), peak " << (peak > 0.0f ? 20.0 * std::log10(peak) : -999.0) << " dBFS\n";
    midi.finish(out);
    return 0;
}

}  // namespace vsthost
