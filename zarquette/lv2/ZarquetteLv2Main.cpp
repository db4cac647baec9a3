// The bundle library's one export: hosts ask it for the plug-ins it holds.
#include "zarquette/lv2/ZarquetteLv2Recipe.h"

extern "C" LV2_SYMBOL_EXPORT const LV2_Descriptor* lv2_descriptor(uint32_t index)
{
    return index == 0 ? zarquette::get_lv2_descriptor().use() : nullptr;
}
