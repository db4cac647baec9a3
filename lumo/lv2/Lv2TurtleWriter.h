#pragma once

#include <string>

namespace lumo
{

class Lv2Plugin;
struct Lv2PluginRecipe;

// The bundle's Turtle files, written from a live plug-in: the ports, names,
// symbols, ranges, defaults, units and labels come from the very objects a
// host's calls reach, so the description cannot drift from the code. An
// editor joins later as one more binary, named in the manifest beside the
// plug-in's.
class Lv2TurtleWriter
{
public:
    // binary: the plug-in library's file name; description: the name of the
    // file that write_description() fills.
    Lv2TurtleWriter(const Lv2PluginRecipe& recipe, Lv2Plugin& plugin, std::string binary, std::string description);

    std::string write_manifest() const;
    std::string write_description() const;

private:
    void write_ports(std::string& out) const;
    void write_control(std::string& out, int index) const;

    const Lv2PluginRecipe& _recipe;
    Lv2Plugin& _plugin;
    std::string _binary;
    std::string _description;
};

}  // namespace lumo
