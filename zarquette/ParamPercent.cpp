#include "zarquette/ParamPercent.h"

#include "lumo/TextCopy.h"
#include "zarquette/ParamDisplay.h"

#include <algorithm>

namespace zarquette
{

ParamPercent::ParamPercent(const char* name) : _name(name)
{
}

void ParamPercent::get_name(char* text, int capacity) const
{
    lumo::copy_text(text, capacity, _name);
}

void ParamPercent::get_unit(char* text, int capacity) const
{
    lumo::copy_text(text, capacity, "%");
}

void ParamPercent::get_display(char* text, int capacity, double nat) const
{
    format_param_display(text, capacity, "%6.2f", nat * 100.0);
}

double ParamPercent::parse_display(const char* text, bool& ok) const
{
    double v = 0.0;
    if (!parse_param_number(text, v))
    {
        return 0.0;
    }
    ok = true;
    return std::clamp(v * 0.01, 0.0, 1.0);
}

}  // namespace zarquette
