#include "DemoCommand.h"

#include "CommandLine.h"
#include "DemoSong.h"
#include "WavWriter.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <stdexcept>
#include <vector>

namespace vsthost
{

int DemoCommand::run(const std::vector<std::string>& words, std::ostream& out)
{
    const CommandLine args(words, {"-o", "--rate", "--tempo", "--length"}, {});
    if (!args.get_positionals().empty() || !args.has("-o"))
    {
        throw std::invalid_argument("usage: vsthost demo -o OUT.wav [--rate HZ] [--tempo BPM] [--length SECONDS]");
    }
    const double rate = args.get_number("--rate", 44100.0, 8000.0, 768000.0);
    DemoSong song(rate, args.get_number("--tempo", 120.0, 20.0, 999.0));
    const std::uint64_t total = args.has("--length")
                                    ? static_cast<std::uint64_t>(args.get_number("--length", 0, 0, 3600.0) * rate)
                                    : song.get_frame_count();
    const std::string path = args.get_value("-o", "");
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (!file)
    {
        throw std::runtime_error("cannot write " + path);
    }
    WavWriter writer(file, 2, static_cast<int>(std::lround(rate)), WavWriter::Format::float32);
    constexpr std::size_t block = 4096;
    std::vector<float> left(block);
    std::vector<float> right(block);
    const float* channels[2] = {left.data(), right.data()};
    for (std::uint64_t done = 0; done < total;)
    {
        const auto frames = static_cast<std::size_t>(std::min<std::uint64_t>(block, total - done));
        // Silence after the song's end, when a longer length is asked for.
        std::fill(left.begin(), left.end(), 0.0f);
        std::fill(right.begin(), right.end(), 0.0f);
        song.render(left.data(), right.data(), frames);
        writer.write(channels, frames);
        done += frames;
    }
    if (!writer.finish())
    {
        throw std::runtime_error("cannot write " + path);
    }
    out << "wrote " << total << " frames of the demo song at " << rate << " Hz to " << path << "\n";
    return 0;
}

}  // namespace vsthost
