#include "zarquette/lv2/ZarquetteLv2Recipe.h"

#include "zarquette/ZarquetteDsp.h"

namespace zarquette
{
namespace
{

lumo::DspInterface* create_dsp()
{
    return new ZarquetteDsp();
}

}  // namespace

const lumo::Lv2PluginRecipe& get_lv2_recipe()
{
    static const lumo::Lv2PluginRecipe recipe{
        lv2_uri, "Velnor/Zarquette LV2", &create_dsp, "lv2:DelayPlugin",
        "Tempo-locked stutters, beat repeats and echoes through a resonant, saturating filter, "
        "with recordings of cats and a daily lunch break."};
    return recipe;
}

const lumo::Lv2Descriptor& get_lv2_descriptor()
{
    static const lumo::Lv2Descriptor descriptor(get_lv2_recipe());
    return descriptor;
}

}  // namespace zarquette
