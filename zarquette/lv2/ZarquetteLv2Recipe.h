#pragma once

#include "lumo/lv2/Lv2Descriptor.h"
#include "lumo/lv2/Lv2PluginRecipe.h"

namespace zarquette
{

// The plug-in's URI, and its editor's (an LV2 UI in a binary of its own).
inline constexpr const char* lv2_uri = "urn:velnor:zarquette";
inline constexpr const char* lv2_ui_uri = "urn:velnor:zarquette#ui";

// How the LV2 entry builds and describes Zarquette.
const lumo::Lv2PluginRecipe& get_lv2_recipe();
// The descriptor the bundle's library hands to hosts.
const lumo::Lv2Descriptor& get_lv2_descriptor();

}  // namespace zarquette
