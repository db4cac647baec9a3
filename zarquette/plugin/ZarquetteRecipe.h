#pragma once

#include "lumo/vst2/Vst2Entry.h"

namespace zarquette
{

// How the VST 2 entry point builds Zarquette.
const lumo::Vst2PluginRecipe& get_vst2_recipe();

}  // namespace zarquette
