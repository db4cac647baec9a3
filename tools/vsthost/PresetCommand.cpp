#include "PresetCommand.h"

#include "BinaryFile.h"
#include "CommandLine.h"
#include "FxExchange.h"
#include "HostedPlugin.h"
#include "InfoCommand.h"
#include "PluginLibrary.h"

#include <stdexcept>

namespace vsthost
{

namespace
{

const char* describe_kind(const FxFile& file)
{
    switch (file.kind)
    {
    case FxFile::Kind::program_params:
        return "program of parameters (FxCk)";
    case FxFile::Kind::program_chunk:
        return "program chunk (FPCh)";
    case FxFile::Kind::bank_params:
        return "bank of parameter programs (FxBk)";
    default:
        return "bank chunk (FBCh)";
    }
}

}  // namespace

int PresetCommand::run(const std::vector<std::string>& words, std::ostream& out)
{
    const CommandLine args(words, {"--program"}, {"--ignore-id"});
    const auto& pos = args.get_positionals();
    if (pos.size() != 3 || (pos[0] != "save" && pos[0] != "load"))
    {
        throw std::invalid_argument("usage: vsthost preset save|load PLUGIN FILE [--program N] [--ignore-id]");
    }
    PluginLibrary library(pos[1]);
    HostedPlugin plugin(library);
    if (args.has("--program"))
    {
        plugin.set_program(static_cast<int>(args.get_number("--program", 0, 0, plugin.get_num_programs() - 1)));
    }
    if (pos[0] == "save")
    {
        const FxFile file = FxExchange::capture(plugin, FxExchange::is_bank_path(pos[2]));
        const std::vector<std::uint8_t> bytes = file.write();
        write_binary_file(pos[2], bytes);
        out << "saved " << describe_kind(file) << " to " << pos[2] << " (" << bytes.size() << " bytes)\n";
        return 0;
    }
    const FxFile file = FxExchange::load(pos[2]);
    const int result = FxExchange::apply(plugin, file, args.has("--ignore-id"));
    if (result != 0)
    {
        throw std::runtime_error(pos[2] + ": " + FxExchange::get_error_text(result));
    }
    out << "loaded " << describe_kind(file) << " from " << pos[2] << "; program " << plugin.get_program() << " \""
        << plugin.get_program_name() << "\":\n";
    InfoCommand::print_parameters(plugin, out);
    return 0;
}

}  // namespace vsthost
