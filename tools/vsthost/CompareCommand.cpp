#include "CompareCommand.h"

#include "CommandLine.h"
#include "ImageDiff.h"
#include "PngFile.h"
#include "WavReader.h"
#include "tools/soundcheck/SoundComparison.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <stdexcept>

namespace vsthost
{
namespace
{

const char* const usage =
    "usage: vsthost compare A.png B.png [--tolerance N] [--zoom N]\n"
    "       vsthost compare A.wav B.wav [--tempo BPM] [--rms-db DB] [--band-db DB]";

bool is_wav(const std::string& path)
{
    std::string tail = path.size() >= 4 ? path.substr(path.size() - 4) : path;
    std::transform(tail.begin(), tail.end(), tail.begin(), [](unsigned char c) { return std::tolower(c); });
    return tail == ".wav";
}

soundcheck::SoundProfile profile_of(const std::string& path, double tempo)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
    {
        throw std::runtime_error("cannot open " + path);
    }
    WavReader wav(file);
    std::vector<std::vector<float>> channels(static_cast<std::size_t>(wav.get_channels()));
    std::vector<float*> pointers(channels.size());
    constexpr std::size_t kBlock = 4096;
    for (std::size_t got = 1; got != 0;)
    {
        for (std::size_t c = 0; c < channels.size(); ++c)
        {
            channels[c].resize(channels[c].size() + kBlock);
            pointers[c] = channels[c].data() + channels[c].size() - kBlock;
        }
        got = wav.read(pointers.data(), kBlock);
        for (auto& channel : channels)
        {
            channel.resize(channel.size() - kBlock + got);
        }
    }
    std::vector<const float*> data;
    for (const auto& channel : channels)
    {
        data.push_back(channel.data());
    }
    const std::size_t frames = channels.empty() ? 0 : channels.front().size();
    return soundcheck::SoundProfile::analyse(data, frames, wav.get_sample_rate(), tempo);
}

int compare_sound(const CommandLine& args, std::ostream& out)
{
    const auto& pos = args.get_positionals();
    soundcheck::SoundComparison::Tolerances tolerances;
    tolerances.rms_db = args.get_number("--rms-db", tolerances.rms_db, 0.0, 100.0);
    tolerances.band_db = args.get_number("--band-db", tolerances.band_db, 0.0, 100.0);
    const double tempo = args.get_number("--tempo", 120.0, 20.0, 999.0);
    const soundcheck::SoundComparison comparison(profile_of(pos[0], tempo), profile_of(pos[1], tempo), tolerances);
    comparison.print(out);
    return comparison.is_same() ? 0 : 1;
}

// The picture with every pixel as a factor x factor block, as an editor
// zoomed by that factor draws it.
Image enlarge(const Image& image, int factor)
{
    Image large(image.width * factor, image.height * factor);
    for (int y = 0; y < large.height; ++y)
    {
        for (int x = 0; x < large.width; ++x)
        {
            const std::uint8_t* from = image.use_pixel(x / factor, y / factor);
            std::copy(from, from + 4, &large.rgba[(static_cast<std::size_t>(y) * large.width + x) * 4]);
        }
    }
    return large;
}

}  // namespace

int CompareCommand::run(const std::vector<std::string>& words, std::ostream& out)
{
    const CommandLine args(words, {"--tolerance", "--zoom", "--tempo", "--rms-db", "--band-db"}, {});
    const auto& pos = args.get_positionals();
    if (pos.size() != 2)
    {
        throw std::invalid_argument(usage);
    }
    if (is_wav(pos[0]) && is_wav(pos[1]))
    {
        return compare_sound(args, out);
    }
    const int tolerance = static_cast<int>(args.get_number("--tolerance", 0, 0, 255));
    const int zoom = static_cast<int>(args.get_number("--zoom", 1, 1, 8));
    const ImageDiff diff(enlarge(PngFile::read(pos[0]), zoom), PngFile::read(pos[1]), tolerance);
    diff.print(out);
    return 0;
}

}  // namespace vsthost
