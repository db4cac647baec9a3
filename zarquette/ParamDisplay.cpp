#include "zarquette/ParamDisplay.h"

#include "lumo/TextCopy.h"

#include <cmath>
#include <cstdio>

namespace zarquette
{

void format_param_display(char* text, int capacity, const char* format, double value)
{
    char full[64];
    std::snprintf(full, sizeof(full), format, value);
    char kept[16];
    lumo::copy_text(kept, sizeof(kept), full);
    lumo::copy_text(text, capacity, kept);
}

bool parse_param_number(const char* text, double& value)
{
    if (text == nullptr)
    {
        return false;
    }
    double v = 0.0;
    if (std::sscanf(text, "%lf", &v) != 1 || std::isnan(v))
    {
        return false;
    }
    value = v;
    return true;
}

}  // namespace zarquette
