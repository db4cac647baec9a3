#include "FxExchange.h"

#include "BinaryFile.h"
#include "HostedPlugin.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

namespace vsthost
{

FxProgram FxExchange::capture_program(HostedPlugin& plugin)
{
    FxProgram program;
    program.name = plugin.get_program_name();
    for (int i = 0; i < plugin.get_num_params(); ++i)
    {
        program.params.push_back(plugin.get_param(i));
    }
    return program;
}

void FxExchange::apply_program(HostedPlugin& plugin, const FxProgram& program)
{
    plugin.set_program_name(program.name);
    const int count = std::min(plugin.get_num_params(), static_cast<int>(program.params.size()));
    for (int i = 0; i < count; ++i)
    {
        plugin.set_param(i, program.params[static_cast<std::size_t>(i)]);
    }
}

FxFile FxExchange::capture(HostedPlugin& plugin, bool bank)
{
    FxFile file;
    file.unique_id = plugin.get_unique_id();
    file.plugin_version = plugin.use_effect().version;
    const bool chunks = plugin.has_flag(lumo::vst2::effect_flags::program_chunks);
    const int current = plugin.get_program();
    if (!bank)
    {
        file.kind = chunks ? FxFile::Kind::program_chunk : FxFile::Kind::program_params;
        file.chunk_count = plugin.get_num_params();
        if (chunks)
        {
            file.chunk_program_name = plugin.get_program_name();
            file.chunk = plugin.get_chunk(true);
        }
        else
        {
            file.programs.push_back(capture_program(plugin));
        }
        return file;
    }
    file.kind = chunks ? FxFile::Kind::bank_chunk : FxFile::Kind::bank_params;
    file.format_version = 2;
    file.current_program = current;
    file.chunk_count = plugin.get_num_programs();
    if (chunks)
    {
        file.chunk = plugin.get_chunk(false);
        return file;
    }
    for (int p = 0; p < plugin.get_num_programs(); ++p)
    {
        plugin.set_program(p);
        file.programs.push_back(capture_program(plugin));
    }
    plugin.set_program(current);
    return file;
}

int FxExchange::apply(HostedPlugin& plugin, const FxFile& file, bool ignore_id)
{
    if (!ignore_id && file.unique_id != plugin.get_unique_id())
    {
        return error_wrong_plugin;
    }
    if (file.is_chunk() != plugin.has_flag(lumo::vst2::effect_flags::program_chunks))
    {
        return error_kind;
    }
    if (file.is_chunk())
    {
        if (!plugin.set_chunk(file.chunk, !file.is_bank()))
        {
            return error_refused;
        }
        if (!file.is_bank())
        {
            plugin.set_program_name(file.chunk_program_name);
        }
        return 0;
    }
    if (!file.is_bank())
    {
        apply_program(plugin, file.programs.front());
        return 0;
    }
    const int count = std::min(plugin.get_num_programs(), static_cast<int>(file.programs.size()));
    for (int p = 0; p < count; ++p)
    {
        plugin.set_program(p);
        apply_program(plugin, file.programs[static_cast<std::size_t>(p)]);
    }
    if (file.current_program >= 0 && file.current_program < plugin.get_num_programs())
    {
        plugin.set_program(file.current_program);
    }
    return 0;
}

const char* FxExchange::get_error_text(int code)
{
    switch (code)
    {
    case error_wrong_plugin:
        return "the file belongs to a plug-in with another unique ID";
    case error_kind:
        return "the file stores a chunk but the plug-in uses parameters, or the reverse";
    case error_refused:
        return "the plug-in refused the chunk";
    default:
        return FxFile::get_error_text(code);
    }
}

bool FxExchange::is_bank_path(const std::string& path)
{
    if (path.size() < 4)
    {
        return false;
    }
    std::string ext = path.substr(path.size() - 4);
    std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::tolower(c); });
    return ext == ".fxb";
}

FxFile FxExchange::load(const std::string& path)
{
    const std::vector<std::uint8_t> bytes = read_binary_file(path);
    FxFile file;
    const int result = FxFile::read(bytes.data(), bytes.size(), file);
    if (result != 0)
    {
        throw std::runtime_error(path + ": " + FxFile::get_error_text(result));
    }
    return file;
}

}  // namespace vsthost
