#pragma once

#include "lumo/lv2/ui/Lv2UiDescriptor.h"
#include "lumo/lv2/ui/Lv2UiRecipe.h"

namespace zarquette
{

// How the LV2 editor entry builds Zarquette's editor, apart from the effect.
const lumo::Lv2UiRecipe& get_lv2_ui_recipe();
// The descriptor the editor's library hands to hosts.
const lumo::Lv2UiDescriptor& get_lv2_ui_descriptor();

}  // namespace zarquette
