#include "lumo/lv2/Lv2BindingRecord.h"

#include "basic/BigEndian.h"
#include "lumo/midi/MidiControlMap.h"
#include "lumo/midi/MidiMgr.h"

#include <algorithm>

namespace lumo
{
namespace
{

constexpr int id_shift = 16;

bool is_valid_id(std::int32_t id)
{
    return id >= 0 && MidiMgr::make_id(id >> id_shift, id & 0xFFFF) == id;
}

}  // namespace

std::vector<std::uint8_t> Lv2BindingRecord::write(const MidiMgr& mgr)
{
    std::vector<std::uint8_t> record(max_size);
    record.resize(write_to(mgr, record.data()));
    return record;
}

std::size_t Lv2BindingRecord::write_to(const MidiMgr& mgr, std::uint8_t* out)
{
    int count = 0;
    for (int i = 0; i < MidiControlMap::capacity; ++i)
    {
        if (mgr.get_id(i) != no_id)
        {
            count = i + 1;
        }
    }
    basic::set_be32(out, static_cast<std::uint32_t>(count));
    for (int i = 0; i < count; ++i)
    {
        basic::set_be32(out + header_size + id_size * static_cast<std::size_t>(i),
                        static_cast<std::uint32_t>(mgr.get_id(i)));
    }
    return header_size + id_size * static_cast<std::size_t>(count);
}

bool Lv2BindingRecord::read(const std::uint8_t* data, std::size_t size, std::vector<std::int32_t>& ids)
{
    if (data == nullptr || size < header_size)
    {
        return false;
    }
    const std::uint32_t count = basic::get_be32(data);
    if (count > static_cast<std::uint32_t>(MidiControlMap::capacity) || size != header_size + id_size * count)
    {
        return false;
    }
    std::vector<std::int32_t> read_ids(count);
    for (std::size_t i = 0; i < count; ++i)
    {
        const auto id = static_cast<std::int32_t>(basic::get_be32(data + header_size + id_size * i));
        const auto done = read_ids.begin() + static_cast<std::ptrdiff_t>(i);
        if (id != no_id && (!is_valid_id(id) || std::find(read_ids.begin(), done, id) != done))
        {
            return false;
        }
        read_ids[i] = id;
    }
    ids.swap(read_ids);
    return true;
}

void Lv2BindingRecord::apply(const std::vector<std::int32_t>& ids, MidiMgr& mgr)
{
    for (int i = 0; i < MidiControlMap::capacity; ++i)
    {
        const std::int32_t id = static_cast<std::size_t>(i) < ids.size() ? ids[static_cast<std::size_t>(i)] : no_id;
        if (id == no_id)
        {
            mgr.unbind(i);
        }
        else
        {
            mgr.bind(i, id >> id_shift, id & 0xFFFF);
        }
    }
}

}  // namespace lumo
