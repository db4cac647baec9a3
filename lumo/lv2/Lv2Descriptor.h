#pragma once

#include <lv2/core/lv2.h>

namespace lumo
{

class Lv2Plugin;
struct Lv2PluginRecipe;

// The LV2 entry of a plug-in: the descriptor a host gets from lv2_descriptor(),
// whose calls build and drive an Lv2Plugin. Every call runs with our
// floating-point modes (denormals flushed while rendering) and lets no
// exception reach the host: a failed instantiation gives no instance, any
// other failed call a neutral answer.
class Lv2Descriptor
{
public:
    // The recipe must outlive the descriptor (both are the plug-in's statics).
    explicit Lv2Descriptor(const Lv2PluginRecipe& recipe);

    const LV2_Descriptor* use() const { return &_descriptor; }
    const Lv2PluginRecipe& use_recipe() const { return *_recipe; }

private:
    // First: the host hands its address back to instantiate.
    LV2_Descriptor _descriptor;
    const Lv2PluginRecipe* _recipe;
};

}  // namespace lumo
