#include "CompareCommand.h"

#include "CommandLine.h"
#include "ImageDiff.h"
#include "PngFile.h"

#include <stdexcept>

namespace vsthost
{

int CompareCommand::run(const std::vector<std::string>& words, std::ostream& out)
{
    const CommandLine args(words, {"--tolerance"}, {});
    const auto& pos = args.get_positionals();
    if (pos.size() != 2)
    {
        throw std::invalid_argument("usage: vsthost compare A.png B.png [--tolerance N]");
    }
    const int tolerance = static_cast<int>(args.get_number("--tolerance", 0, 0, 255));
    const ImageDiff diff(PngFile::read(pos[0]), PngFile::read(pos[1]), tolerance);
    diff.print(out);
    return 0;
}

}  // namespace vsthost
