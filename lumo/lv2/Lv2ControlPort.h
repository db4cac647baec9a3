#pragma once

#include <string>
#include <vector>

namespace lumo
{

class NormalizedParamInterface;

// How one parameter shows as an LV2 control port: in the unit a user reads
// (a percentage as 0 to 100, not as the fraction the parameter holds), with
// its range, default and unit, and a switch as a toggle with a label for
// each state. The Turtle description and the conversion of the host's values
// both come from here, so they cannot disagree.
class Lv2ControlPort
{
public:
    struct Label
    {
        float value;
        std::string text;
    };

    // Reads the parameter's name, unit, range, default and type (main thread).
    explicit Lv2ControlPort(const NormalizedParamInterface& param);

    // A port symbol from a name: lower case, every other run of characters an
    // underscore ("Nuclear Power" is nuclear_power).
    static std::string make_symbol(const std::string& name);

    const std::string& get_name() const { return _name; }
    const std::string& get_symbol() const { return _symbol; }
    float get_minimum() const { return _minimum; }
    float get_maximum() const { return _maximum; }
    float get_default() const { return _default; }
    // Null when the unit has no LV2 unit.
    const char* get_unit_uri() const { return _unit_uri; }
    bool is_integer() const { return _integer; }
    bool is_toggle() const { return _toggle; }
    // A switch's two states; nothing for other parameters.
    const std::vector<Label>& get_labels() const { return _labels; }

    // Audio thread: the normalized value of a port value, clamped to the
    // parameter's range; false for NaN, which carries no value.
    bool to_norm(float port_value, float& norm) const;
    // The port value of a normalized value (what an editor writes).
    float to_port(float norm) const;

private:

    const NormalizedParamInterface* _param;
    std::string _name;
    std::string _symbol;
    const char* _unit_uri = nullptr;
    double _scale = 1.0;
    float _minimum = 0.0f;
    float _maximum = 1.0f;
    float _default = 0.0f;
    bool _integer = false;
    bool _toggle = false;
    std::vector<Label> _labels;
};

}  // namespace lumo
