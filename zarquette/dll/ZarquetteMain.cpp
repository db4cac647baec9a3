// The plug-in library's one export. Windows hosts look for "main" (the module
// definition file exports this function under that name, since C++ reserves
// the name); other hosts look for "VSTPluginMain".
#include "lumo/vst2/Vst2Entry.h"
#include "zarquette/plugin/ZarquetteRecipe.h"

extern "C"
{

#if defined(_WIN32)
lumo::vst2::AEffect* LUMO_VST2_CALL zarquette_vst2_main(lumo::vst2::HostCallback host)
#else
__attribute__((visibility("default"))) lumo::vst2::AEffect* VSTPluginMain(lumo::vst2::HostCallback host)
#endif
{
    return lumo::vst2_entry(host, zarquette::get_vst2_recipe());
}

}  // extern "C"
