#pragma once

#include "lumo/NormalizedParamInterface.h"

namespace zarquette
{

// A 0 to 1 amount shown as a percentage ("%6.2f" of value x 100, unit "%"). The
// normalized and natural values are the same number.
class ParamPercent : public lumo::NormalizedParamInterface
{
public:
    explicit ParamPercent(const char* name);

    void get_name(char* text, int capacity) const override;
    void get_unit(char* text, int capacity) const override;
    int get_type() const override { return 0; }
    bool is_enabled() const override { return true; }
    void update() override {}
    double norm_to_nat(float norm) const override { return norm; }
    double nat_to_norm(double nat) const override { return nat; }
    void get_display(char* text, int capacity, double nat) const override;
    // "50" means 0.5; out-of-range percentages are clamped to 0 .. 100.
    double parse_display(const char* text, bool& ok) const override;

private:
    const char* _name;
};

}  // namespace zarquette
