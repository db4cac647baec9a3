#pragma once

#include "lumo/NormalizedParamInterface.h"

namespace zarquette
{

// "Nuclear Power": a switch, 0 below normalized 0.5 and 1 from there on.
class ParamNuke : public lumo::NormalizedParamInterface
{
public:
    void get_name(char* text, int capacity) const override;
    void get_unit(char* text, int capacity) const override;
    int get_type() const override { return 1; }
    bool is_enabled() const override { return true; }
    void update() override {}
    double norm_to_nat(float norm) const override;
    double nat_to_norm(double nat) const override;
    // "Oui" when off, "OUI" when on.
    void get_display(char* text, int capacity, double nat) const override;
    // Understands texts containing "Oui" or "OUI", in exactly that case.
    double parse_display(const char* text, bool& ok) const override;
};

}  // namespace zarquette
