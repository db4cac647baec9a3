#include "lumo/ProgramSlot.h"

#include "basic/BigEndian.h"
#include "lumo/TextCopy.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace lumo
{

namespace
{

constexpr std::size_t value_size = 4;

}  // namespace

ProgramSlot::ProgramSlot()
{
    set_name("Default");
}

int ProgramSlot::read(const std::uint8_t* data, std::size_t size)
{
    if (data == nullptr || size < header_size)
    {
        return -1;
    }
    const auto name_size = static_cast<std::int16_t>(basic::get_be16(data + 4));
    const auto nbr_values = static_cast<std::int16_t>(basic::get_be16(data + 6));
    const std::uint32_t nbr_extra = basic::get_be32(data + 8);
    if (name_size < 0 || nbr_values < 0)
    {
        return -1;
    }
    const std::size_t values_pos = header_size + static_cast<std::size_t>(name_size);
    const std::size_t extra_pos = values_pos + value_size * static_cast<std::size_t>(nbr_values);
    if (extra_pos > size || nbr_extra > size - extra_pos)
    {
        return -1;
    }

    // Everything that may fail (allocation) happens before the program changes.
    std::vector<float> values(static_cast<std::size_t>(nbr_values));
    for (std::size_t i = 0; i < values.size(); ++i)
    {
        values[i] = sanitize(basic::get_be_float(data + values_pos + value_size * i));
    }
    std::vector<std::uint8_t> extra(data + extra_pos, data + extra_pos + nbr_extra);

    // The name never reaches past its own field.
    const std::size_t name_max = std::min<std::size_t>(static_cast<std::size_t>(name_size), name_capacity - 1);
    const auto* name = data + header_size;
    const auto name_len = static_cast<std::size_t>(std::find(name, name + name_max, 0) - name);
    std::memcpy(_name, name, name_len);
    _name[name_len] = '\0';
    _tag = basic::get_be32(data);
    _values.swap(values);
    _extra.swap(extra);
    return 0;
}

int ProgramSlot::write(std::uint8_t* data, std::size_t capacity) const
{
    if (data == nullptr || capacity < get_size())
    {
        return -1;
    }
    basic::set_be32(data, _tag);
    basic::set_be16(data + 4, name_capacity);
    basic::set_be16(data + 6, static_cast<std::uint16_t>(_values.size()));
    basic::set_be32(data + 8, static_cast<std::uint32_t>(_extra.size()));
    // The bytes after the name's zero are zeros too: a record never carries
    // leftovers of memory.
    std::memset(data + header_size, 0, name_capacity);
    std::memcpy(data + header_size, _name, std::strlen(_name));
    std::uint8_t* pos = data + header_size + name_capacity;
    for (const float value : _values)
    {
        basic::set_be_float(pos, value);
        pos += value_size;
    }
    std::copy(_extra.begin(), _extra.end(), pos);
    return 0;
}

std::size_t ProgramSlot::get_size() const
{
    return header_size + name_capacity + value_size * _values.size() + _extra.size();
}

void ProgramSlot::set_name(const char* name)
{
    copy_text(_name, name_capacity, name);
}

void ProgramSlot::set_nbr_values(int count)
{
    _values.resize(static_cast<std::size_t>(std::clamp(count, 0, max_nbr_values)), 0.0f);
}

float ProgramSlot::get_value(int index) const
{
    return index >= 0 && index < get_nbr_values() ? _values[static_cast<std::size_t>(index)] : 0.0f;
}

void ProgramSlot::set_value(int index, float value)
{
    if (index >= 0 && index < get_nbr_values())
    {
        _values[static_cast<std::size_t>(index)] = value;
    }
}

bool ProgramSlot::has_same_shape(const ProgramSlot& other) const
{
    return _values.size() == other._values.size() && _extra.size() == other._extra.size();
}

void ProgramSlot::clear()
{
    set_name("Default");
    _tag = 0;
    std::fill(_values.begin(), _values.end(), 0.0f);
    std::fill(_extra.begin(), _extra.end(), std::uint8_t{0});
}

// Values from a record are normalized by definition; whatever a host stored,
// nothing outside [0, 1] reaches the parameters.
float ProgramSlot::sanitize(float value)
{
    return std::isnan(value) ? 0.0f : std::clamp(value, 0.0f, 1.0f);
}

}  // namespace lumo
