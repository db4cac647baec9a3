#include "ValidateCommand.h"

#include "CommandLine.h"
#include "Validator.h"

#include <stdexcept>

namespace vsthost
{

int ValidateCommand::run(const std::vector<std::string>& words, std::ostream& out)
{
    const CommandLine args(words, {"--level", "--rates", "--blocks", "--seed", "--repeats"}, {});
    if (args.get_positionals().size() != 1)
    {
        throw std::invalid_argument(
            "usage: vsthost validate PLUGIN [--level 1|2|3] [--rates R,R...] [--blocks B,B...] [--seed N] "
            "[--repeats N]");
    }
    ValidationOptions options;
    options.path = args.get_positionals()[0];
    options.level = static_cast<int>(args.get_number("--level", options.level, 1, 3));
    options.rates = args.get_number_list("--rates", options.rates, 8000, 768000);
    const std::vector<double> default_blocks(options.blocks.begin(), options.blocks.end());
    options.blocks.clear();
    for (const double b : args.get_number_list("--blocks", default_blocks, 1, 65536))
    {
        options.blocks.push_back(static_cast<int>(b));
    }
    options.seed = static_cast<unsigned>(args.get_number("--seed", options.seed, 0, 4294967295.0));
    options.repeats = static_cast<int>(args.get_number("--repeats", options.repeats, 1, 1000));
    out << "validating " << options.path << " at level " << options.level << ", seed " << options.seed << "\n";
    return Validator(options, out).run() == 0 ? 0 : 1;
}

}  // namespace vsthost
