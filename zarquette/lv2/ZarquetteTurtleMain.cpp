// Writes the LV2 bundle's Turtle files from the plug-in itself, at build time:
//     zarquette_lv2_turtle BUNDLE_DIR BINARY_NAME [UI_BINARY_NAME]
// The plug-in is instantiated as a host would, without features, and
// described as it answers.
#include "lumo/lv2/Lv2Plugin.h"
#include "lumo/lv2/Lv2TurtleWriter.h"
#include "zarquette/lv2/ZarquetteLv2Recipe.h"

#include <exception>
#include <fstream>
#include <iostream>
#include <string>

namespace
{

constexpr const char* description_file = "zarquette.ttl";
constexpr double any_rate = 48000.0;

void write_file(const std::string& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    if (!file.flush())
    {
        throw std::runtime_error("cannot write " + path);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3 && argc != 4)
    {
        std::cerr << "usage: zarquette_lv2_turtle BUNDLE_DIR BINARY_NAME [UI_BINARY_NAME]\n";
        return 2;
    }
    try
    {
        const std::string dir = argv[1];
        lumo::Lv2Plugin plugin(zarquette::get_lv2_recipe(), any_rate, dir, lumo::Lv2Plugin::Features{});
        lumo::Lv2TurtleWriter::Ui ui;
        if (argc == 4)
        {
            ui = lumo::Lv2TurtleWriter::Ui{zarquette::lv2_ui_uri, argv[3]};
        }
        const lumo::Lv2TurtleWriter writer(zarquette::get_lv2_recipe(), plugin, argv[2], description_file, ui);
        write_file(dir + "/manifest.ttl", writer.write_manifest());
        write_file(dir + "/" + description_file, writer.write_description());
        return 0;
    }
    catch (const std::exception& e)
    {
        std::cerr << "zarquette_lv2_turtle: " << e.what() << "\n";
        return 1;
    }
}
