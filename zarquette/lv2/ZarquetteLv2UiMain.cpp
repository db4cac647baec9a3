// The editor library's one export: hosts ask it for the editors it holds.
#include "zarquette/lv2/ZarquetteLv2UiRecipe.h"

extern "C" LV2_SYMBOL_EXPORT const LV2UI_Descriptor* lv2ui_descriptor(uint32_t index)
{
    return index == 0 ? zarquette::get_lv2_ui_descriptor().use() : nullptr;
}
