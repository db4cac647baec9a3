#include "lumo/lv2/Lv2AtomObject.h"

#include "lumo/lv2/Lv2Urids.h"

#include <lv2/atom/atom.h>

#include <cstring>

namespace lumo
{
namespace
{

template <class T>
T load(const std::uint8_t* bytes)
{
    T value;
    std::memcpy(&value, bytes, sizeof(value));
    return value;
}

}  // namespace

Lv2AtomObject::Lv2AtomObject(const Lv2Event& event, const Lv2Urids& urids) : _urids(urids)
{
    const bool object = event.type != 0 && (event.type == urids.atom_object || event.type == urids.atom_blank);
    if (!object || event.body == nullptr || event.size < sizeof(LV2_Atom_Object_Body))
    {
        return;
    }
    _body = event.body;
    _size = event.size;
    _type = load<LV2_Atom_Object_Body>(event.body).otype;
}

template <class Take>
bool Lv2AtomObject::find(std::uint32_t key, Take take) const
{
    if (_body == nullptr || key == 0)
    {
        return false;
    }
    std::uint64_t pos = sizeof(LV2_Atom_Object_Body);
    while (pos + sizeof(LV2_Atom_Property_Body) <= _size)
    {
        const auto property = load<LV2_Atom_Property_Body>(_body + pos);
        const std::uint64_t value_pos = pos + sizeof(LV2_Atom_Property_Body);
        if (property.value.size > _size - value_pos)
        {
            return false;
        }
        if (property.key == key && take(property.value.type, _body + value_pos, property.value.size))
        {
            return true;
        }
        pos = (value_pos + property.value.size + 7u) & ~std::uint64_t{7};
    }
    return false;
}

bool Lv2AtomObject::find_number(std::uint32_t key, double& value) const
{
    return find(key, [&](std::uint32_t type, const std::uint8_t* body, std::uint32_t size) {
        return read_number(type, body, size, value);
    });
}

bool Lv2AtomObject::find_chunk(std::uint32_t key, const std::uint8_t*& data, std::uint32_t& size) const
{
    return find(key, [&](std::uint32_t type, const std::uint8_t* body, std::uint32_t body_size) {
        if (type == 0 || type != _urids.atom_chunk)
        {
            return false;
        }
        data = body;
        size = body_size;
        return true;
    });
}

bool Lv2AtomObject::read_number(std::uint32_t type, const std::uint8_t* body, std::uint32_t size,
                                double& value) const
{
    if (type == 0)
    {
        return false;
    }
    if (type == _urids.atom_float && size >= sizeof(float))
    {
        value = load<float>(body);
    }
    else if (type == _urids.atom_double && size >= sizeof(double))
    {
        value = load<double>(body);
    }
    else if (type == _urids.atom_int && size >= sizeof(std::int32_t))
    {
        value = load<std::int32_t>(body);
    }
    else if (type == _urids.atom_long && size >= sizeof(std::int64_t))
    {
        value = static_cast<double>(load<std::int64_t>(body));
    }
    else
    {
        return false;
    }
    return true;
}

}  // namespace lumo
