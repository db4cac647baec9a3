#pragma once

#include "lumo/AudioPort.h"

namespace lumo
{
class PluginInternal;
}

namespace zarquette
{

// What the effect is to a host apart from its engines: its name, its audio
// ports and its parameters. The audio side is built from it, and so is the
// stand-in that the editor binds its controls to when it runs in a process
// of its own (the LV2 editor): the two cannot differ in a range, a text or a
// port.
class ZarquetteIdentity
{
public:
    static constexpr const char* plugin_name = "Zarquette";

    static lumo::AudioPort make_input_port();
    static lumo::AudioPort make_output_port();
    // Registers the parameters with effect, in internal-index order, each at
    // its default; the tempo keeps its value in the effect's tempo record.
    static void add_params(lumo::PluginInternal& effect);
};

}  // namespace zarquette
