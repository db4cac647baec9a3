#include "lumo/lv2/Lv2ControlPort.h"

#include "lumo/NormalizedParamInterface.h"

#include <lv2/units/units.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace lumo
{
namespace
{

constexpr int text_capacity = 256;

// Units a host shows by their LV2 name, and how many port units make one
// natural unit: the framework's percentages hold fractions.
struct UnitInfo
{
    const char* text;
    const char* uri;
    double scale;
};

constexpr UnitInfo units[] = {
    {"BPM", LV2_UNITS__bpm, 1.0}, {"%", LV2_UNITS__pc, 100.0}, {"dB", LV2_UNITS__db, 1.0},
    {"Hz", LV2_UNITS__hz, 1.0},   {"ms", LV2_UNITS__ms, 1.0},   {"s", LV2_UNITS__s, 1.0},
};

}  // namespace

Lv2ControlPort::Lv2ControlPort(const NormalizedParamInterface& param) : _param(&param)
{
    char text[text_capacity] = {};
    param.get_name(text, text_capacity);
    _name = text;
    _symbol = make_symbol(_name);
    param.get_unit(text, text_capacity);
    for (const UnitInfo& unit : units)
    {
        if (std::strcmp(text, unit.text) == 0)
        {
            _unit_uri = unit.uri;
            _scale = unit.scale;
        }
    }
    _minimum = to_port(0.0f);
    _maximum = to_port(1.0f);
    if (_minimum > _maximum)
    {
        std::swap(_minimum, _maximum);
    }
    _default = to_port(param.default_norm);
    _integer = param.get_type() == 1;
    if (!_integer)
    {
        return;
    }
    _minimum = std::floor(_minimum + 0.5f);
    _maximum = std::floor(_maximum + 0.5f);
    _default = std::floor(_default + 0.5f);
    // The VST 2 adapter's rule: integer steps one apart make a switch, and
    // hosts show its states by their names.
    _toggle = _maximum - _minimum == 1.0f;
    if (!_toggle)
    {
        return;
    }
    for (const float v : {_minimum, _maximum})
    {
        param.get_display(text, text_capacity, v / _scale);
        _labels.push_back(Label{v, text});
    }
}

std::string Lv2ControlPort::make_symbol(const std::string& name)
{
    std::string symbol;
    bool gap = false;
    for (const char c : name)
    {
        const bool keep = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (!keep)
        {
            gap = !symbol.empty();
            continue;
        }
        if (gap)
        {
            symbol += '_';
            gap = false;
        }
        symbol += static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    }
    if (symbol.empty() || (symbol[0] >= '0' && symbol[0] <= '9'))
    {
        symbol.insert(0, "_");
    }
    return symbol;
}

float Lv2ControlPort::to_port(float norm) const
{
    return static_cast<float>(_param->norm_to_nat(norm) * _scale);
}

bool Lv2ControlPort::to_norm(float port_value, float& norm) const
{
    if (std::isnan(port_value))
    {
        return false;
    }
    // Hosts should keep a control within its port's range; a value beyond it
    // is taken as the nearest end rather than handed to a mapping that is not
    // defined there.
    const float port = std::clamp(port_value, _minimum, _maximum);
    norm = static_cast<float>(std::clamp(_param->nat_to_norm(port / _scale), 0.0, 1.0));
    return true;
}

}  // namespace lumo
