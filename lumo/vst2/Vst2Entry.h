#pragma once

#include "lumo/vst2/Vst2Abi.h"

#include <cstdint>

namespace lumo
{

class DspInterface;
class GuiInterface;

// What a plug-in gives the VST 2 entry point to build itself.
struct Vst2PluginRecipe
{
    std::int32_t unique_id;
    const char* registry_path;
    int nbr_params;
    DspInterface* (*create_dsp)();
    // Null for a plug-in without an editor.
    GuiInterface* (*create_gui)();
};

// The start-up of a plug-in: builds the audio side, the editor, their host
// services and the adapter, wires them, initialises and selects program 0.
// Returns the effect record, or null when the host is too old or anything
// failed; no exception leaves it.
vst2::AEffect* vst2_entry(vst2::HostCallback host, const Vst2PluginRecipe& recipe);

}  // namespace lumo
