#include "zarquette/lv2/ZarquetteLv2UiRecipe.h"

#include "lumo/DspMirror.h"
#include "zarquette/ZarquetteIdentity.h"
#include "zarquette/gui/ZarquetteGui.h"
#include "zarquette/lv2/ZarquetteLv2Recipe.h"

namespace zarquette
{
namespace
{

lumo::DspInterface* create_dsp()
{
    return new lumo::DspMirror(lumo::DspMirror::Shape{ZarquetteIdentity::plugin_name,
                                                      {ZarquetteIdentity::make_input_port()},
                                                      {ZarquetteIdentity::make_output_port()},
                                                      &ZarquetteIdentity::add_params});
}

lumo::GuiInterface* create_gui()
{
    return new ZarquetteGui();
}

}  // namespace

const lumo::Lv2UiRecipe& get_lv2_ui_recipe()
{
    static const lumo::Lv2UiRecipe recipe{lv2_ui_uri, lv2_uri, &create_dsp, &create_gui};
    return recipe;
}

const lumo::Lv2UiDescriptor& get_lv2_ui_descriptor()
{
    static const lumo::Lv2UiDescriptor descriptor(get_lv2_ui_recipe());
    return descriptor;
}

}  // namespace zarquette
