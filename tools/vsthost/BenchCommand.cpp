#include "BenchCommand.h"

#include "AudioBuffers.h"
#include "BenchStatistics.h"
#include "CommandLine.h"
#include "CpuClock.h"
#include "DemoSong.h"
#include "HostedPlugin.h"
#include "PluginLibrary.h"
#include "RenderCommand.h"
#include "WavReader.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iomanip>
#include <memory>
#include <stdexcept>

namespace vsthost
{

namespace
{

const char* const usage =
    "usage: vsthost bench PLUGIN [IN.wav] [--set NAME=TEXT] [--norm NAME=VALUE] [--preset FILE]\n"
    "       [--block FRAMES] [--rate HZ] [--seconds S] [--repeats N] [--tempo BPM]";

// The dry signal, S seconds of it in memory: the demo song played again from
// its start as often as needed, or a WAV file followed by silence.
AudioBuffers prepare_input(const BenchCommand::Options& opt, double& rate)
{
    std::ifstream file;
    std::unique_ptr<WavReader> wav;
    if (!opt.input.empty())
    {
        file.open(opt.input, std::ios::binary);
        if (!file)
        {
            throw std::runtime_error("cannot open " + opt.input);
        }
        wav = std::make_unique<WavReader>(file);
        rate = wav->get_sample_rate();
    }
    const auto frames = static_cast<std::size_t>(std::llround(opt.seconds * rate));
    AudioBuffers dry(wav ? wav->get_channels() : 2, std::max<std::size_t>(frames, 1));
    dry.clear();
    if (wav)
    {
        wav->read(dry.use_pointers(), frames);
        return dry;
    }
    DemoSong song(rate, opt.tempo);
    for (std::size_t done = 0; done < frames;)
    {
        const std::size_t got = song.render(dry.use_channel(0) + done, dry.use_channel(1) + done, frames - done);
        if (got == 0)
        {
            song = DemoSong(rate, opt.tempo);
        }
        done += got;
    }
    return dry;
}

struct Timings
{
    std::vector<double> realtime_factors;  // one per pass
    std::vector<double> block_seconds;     // every block of the timed pass
};

// Plays the whole dry signal once, from a reset plug-in as after a host's
// stop; with block_seconds, times every block.
void play_pass(HostedPlugin& plugin, AudioBuffers& dry, std::size_t block, std::vector<double>* block_seconds)
{
    AudioBuffers in(plugin.get_num_inputs(), block);
    AudioBuffers wet(plugin.get_num_outputs(), block);
    plugin.suspend();
    plugin.resume();
    const std::size_t total = dry.get_frames();
    for (std::size_t done = 0; done < total; done += block)
    {
        const std::size_t frames = std::min(block, total - done);
        for (int c = 0; c < plugin.get_num_inputs(); ++c)
        {
            std::copy_n(dry.use_channel(c % dry.get_channels()) + done, frames, in.use_channel(c));
        }
        const double start = block_seconds != nullptr ? CpuClock::get_block_seconds() : 0.0;
        plugin.process(in.use_pointers(), wet.use_pointers(), static_cast<std::int32_t>(frames));
        if (block_seconds != nullptr)
        {
            block_seconds->push_back(CpuClock::get_block_seconds() - start);
        }
    }
}

// The passes that give the real-time factor read the CPU clock only at their
// ends: reading it per block can cost more than a small block itself (under
// wine it is a call to the server). One more pass times each block.
Timings measure(HostedPlugin& plugin, AudioBuffers& dry, const BenchCommand::Options& opt, double rate)
{
    const auto block = static_cast<std::size_t>(opt.block);
    const double seconds = static_cast<double>(dry.get_frames()) / rate;
    Timings t;
    for (int pass = 0; pass < opt.repeats; ++pass)
    {
        const double start = CpuClock::get_thread_seconds();
        play_pass(plugin, dry, block, nullptr);
        const double cpu = CpuClock::get_thread_seconds() - start;
        // A clock too coarse to see the pass at all gives no factor.
        if (cpu > 0.0)
        {
            t.realtime_factors.push_back(seconds / cpu);
        }
    }
    t.block_seconds.reserve(dry.get_frames() / block + 1);
    play_pass(plugin, dry, block, &t.block_seconds);
    plugin.suspend();
    return t;
}

}  // namespace

BenchCommand::Options BenchCommand::parse(const CommandLine& args)
{
    const auto& pos = args.get_positionals();
    if (pos.empty() || pos.size() > 2)
    {
        throw std::invalid_argument(usage);
    }
    Options opt;
    opt.plugin = pos[0];
    opt.input = pos.size() == 2 ? pos[1] : std::string();
    if (!opt.input.empty() && args.has("--rate"))
    {
        throw std::invalid_argument("--rate sets the demo song's rate; a WAV file brings its own");
    }
    opt.rate = args.get_number("--rate", opt.rate, 8000.0, 768000.0);
    opt.seconds = args.get_number("--seconds", opt.seconds, 0.01, 3600.0);
    opt.tempo = args.get_number("--tempo", opt.tempo, 20.0, 999.0);
    const double block = args.get_number("--block", opt.block, 1.0, 65536.0);
    const double repeats = args.get_number("--repeats", opt.repeats, 1.0, 1000.0);
    if (block != std::floor(block) || repeats != std::floor(repeats))
    {
        throw std::invalid_argument("--block and --repeats take whole numbers");
    }
    opt.block = static_cast<int>(block);
    opt.repeats = static_cast<int>(repeats);
    return opt;
}

int BenchCommand::run(const std::vector<std::string>& words, std::ostream& out)
{
    const CommandLine args(words, {"--set", "--norm", "--preset", "--block", "--rate", "--seconds", "--repeats", "--tempo"},
                           {});
    const Options opt = parse(args);
    double rate = opt.rate;
    AudioBuffers dry = prepare_input(opt, rate);

    PluginLibrary library(opt.plugin);
    HostedPlugin plugin(library);
    plugin.set_sample_rate(rate);
    plugin.set_block_size(opt.block);
    plugin.use_transport().set_tempo(opt.tempo);
    RenderCommand::apply_settings(args, plugin);
    const Timings t = measure(plugin, dry, opt, rate);

    const BenchStatistics::Spread rt = BenchStatistics::get_spread(t.realtime_factors);
    const double p99 = BenchStatistics::get_percentile(t.block_seconds, 99.0);
    const double budget = opt.block / rate;
    out << std::fixed << std::setprecision(1) << "bench " << opt.plugin << ": "
        << static_cast<double>(dry.get_frames()) / rate << " s at " << rate << " Hz in blocks of " << opt.block
        << ", " << opt.repeats << " passes\n"
        << "real-time factor (CPU time): min " << rt.min << "x, median " << rt.median << "x, max " << rt.max << "x\n"
        << std::setprecision(2) << "block time (" << CpuClock::block_clock_name << "), 99th percentile: " << p99 * 1e6 << " us of "
        << budget * 1e6 << " us (" << 100.0 * p99 / budget << " %)\n";
    return 0;
}

}  // namespace vsthost
