#include "zarquette/ParamNuke.h"

#include "lumo/TextCopy.h"
#include "zarquette/ParamDisplay.h"

#include <cmath>
#include <cstring>

namespace zarquette
{

void ParamNuke::get_name(char* text, int capacity) const
{
    lumo::copy_text(text, capacity, "Nuclear Power");
}

void ParamNuke::get_unit(char* text, int capacity) const
{
    lumo::copy_text(text, capacity, "");
}

double ParamNuke::norm_to_nat(float norm) const
{
    return std::floor(static_cast<double>(norm) + 0.5);
}

double ParamNuke::nat_to_norm(double nat) const
{
    return std::floor(nat + 0.5);
}

void ParamNuke::get_display(char* text, int capacity, double nat) const
{
    const bool on = std::floor(nat + 0.5) >= 1.0;
    lumo::copy_text(text, capacity, on ? "OUI" : "Oui");
}

double ParamNuke::parse_display(const char* text, bool& ok) const
{
    if (text == nullptr)
    {
        return 0.0;
    }
    if (std::strstr(text, "Oui") != nullptr)
    {
        ok = true;
        return 0.0;
    }
    if (std::strstr(text, "OUI") != nullptr)
    {
        ok = true;
        return 1.0;
    }
    return 0.0;
}

}  // namespace zarquette
