#pragma once

#include <lv2/ui/ui.h>

namespace lumo
{

struct Lv2UiRecipe;

// The LV2 entry of a plug-in's editor: the descriptor a host gets from
// lv2ui_descriptor(), whose calls build and drive an Lv2Editor. It needs the
// host's parent window and its idle calls; every call runs with our
// floating-point modes and lets no exception reach the host: a failed
// instantiation gives no editor, any other failed call does nothing.
class Lv2UiDescriptor
{
public:
    // The recipe must outlive the descriptor (both are the editor's statics).
    explicit Lv2UiDescriptor(const Lv2UiRecipe& recipe);

    const LV2UI_Descriptor* use() const { return &_descriptor; }
    const Lv2UiRecipe& use_recipe() const { return *_recipe; }

private:
    // First: the host hands its address back to instantiate.
    LV2UI_Descriptor _descriptor;
    const Lv2UiRecipe* _recipe;
};

}  // namespace lumo
