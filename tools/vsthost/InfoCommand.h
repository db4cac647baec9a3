#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace vsthost
{

class HostedPlugin;

// "vsthost info PLUGIN": everything a host learns from a plug-in.
class InfoCommand
{
public:
    static int run(const std::vector<std::string>& words, std::ostream& out);
    // The parameters with their texts, also shown after loading a preset.
    static void print_parameters(HostedPlugin& plugin, std::ostream& out);

private:
    static void print_identity(HostedPlugin& plugin, std::ostream& out);
    static void print_programs(HostedPlugin& plugin, std::ostream& out);
    static void print_pins(HostedPlugin& plugin, std::ostream& out);
    static void print_can_do(HostedPlugin& plugin, std::ostream& out);
    static void print_settings_file(HostedPlugin& plugin, std::ostream& out);
};

}  // namespace vsthost
