#pragma once

#include <string>

namespace lumo
{

class Lv2Plugin;
struct Lv2PluginRecipe;

// The bundle's Turtle files, written from a live plug-in: the ports, names,
// symbols, ranges, defaults, units and labels come from the very objects a
// host's calls reach, so the description cannot drift from the code. The
// editor (an X11 UI in a binary of its own) is named in the manifest beside
// the plug-in, with what it needs of the host.
class Lv2TurtleWriter
{
public:
    // The editor's URI and its library's file name; empty for none.
    struct Ui
    {
        std::string uri;
        std::string binary;
    };

    // binary: the plug-in library's file name; description: the name of the
    // file that write_description() fills.
    Lv2TurtleWriter(const Lv2PluginRecipe& recipe, Lv2Plugin& plugin, std::string binary, std::string description,
                    Ui ui = Ui{});

    std::string write_manifest() const;
    std::string write_description() const;

private:
    void write_ports(std::string& out) const;
    void write_control(std::string& out, int index) const;
    void write_ui(std::string& out) const;

    const Lv2PluginRecipe& _recipe;
    Lv2Plugin& _plugin;
    std::string _binary;
    std::string _description;
    Ui _ui;
};

}  // namespace lumo
