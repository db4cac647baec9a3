#include "zarquette/plugin/ZarquetteRecipe.h"

#include "zarquette/ZarquetteDsp.h"
#include "zarquette/gui/ZarquetteGui.h"

namespace zarquette
{
namespace
{

lumo::DspInterface* create_dsp()
{
    return new ZarquetteDsp();
}

lumo::GuiInterface* create_gui()
{
    return new ZarquetteGui();
}

}  // namespace

const lumo::Vst2PluginRecipe& get_vst2_recipe()
{
    static const lumo::Vst2PluginRecipe recipe{
        lumo::vst2::four_cc('V', 'Z', 'r', 'q'), "Velnor\\Zarquette VST2", ZarquetteDsp::nbr_params,
        &create_dsp, &create_gui};
    return recipe;
}

}  // namespace zarquette
