#include "CompareCommand.h"

#include "CommandLine.h"
#include "ImageDiff.h"
#include "PngFile.h"

#include <algorithm>
#include <stdexcept>

namespace vsthost
{

namespace
{

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
    const CommandLine args(words, {"--tolerance", "--zoom"}, {});
    const auto& pos = args.get_positionals();
    if (pos.size() != 2)
    {
        throw std::invalid_argument("usage: vsthost compare A.png B.png [--tolerance N] [--zoom N]");
    }
    const int tolerance = static_cast<int>(args.get_number("--tolerance", 0, 0, 255));
    const int zoom = static_cast<int>(args.get_number("--zoom", 1, 1, 8));
    const ImageDiff diff(enlarge(PngFile::read(pos[0]), zoom), PngFile::read(pos[1]), tolerance);
    diff.print(out);
    return 0;
}

}  // namespace vsthost
