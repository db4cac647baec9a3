#include "lumo/midi/MidiControlMap.h"

namespace lumo
{

MidiControlMap::MidiControlMap()
{
    for (auto& id : _ids)
    {
        id.store(no_id, std::memory_order_relaxed);
    }
}

int MidiControlMap::bind(int index, std::int32_t id)
{
    if (index < 0 || index >= capacity || id < 0)
    {
        return -1;
    }
    const int end = get_end();
    for (int i = 0; i < end; ++i)
    {
        if (i != index && get_id(i) == id)
        {
            _ids[static_cast<std::size_t>(i)].store(no_id, std::memory_order_release);
        }
    }
    _ids[static_cast<std::size_t>(index)].store(id, std::memory_order_release);
    // Only ever grows, so a walker never misses a binding.
    int seen = end;
    while (seen <= index && !_end.compare_exchange_weak(seen, index + 1, std::memory_order_acq_rel))
    {
    }
    return 0;
}

void MidiControlMap::unbind(int index)
{
    if (index >= 0 && index < capacity)
    {
        _ids[static_cast<std::size_t>(index)].store(no_id, std::memory_order_release);
    }
}

void MidiControlMap::clear()
{
    const int end = get_end();
    for (int i = 0; i < end; ++i)
    {
        unbind(i);
    }
}

int MidiControlMap::find_index(std::int32_t id) const
{
    const int end = get_end();
    for (int i = 0; i < end; ++i)
    {
        if (get_id(i) == id)
        {
            return i;
        }
    }
    return -1;
}

std::int32_t MidiControlMap::get_id(int index) const
{
    if (index < 0 || index >= capacity)
    {
        return no_id;
    }
    return _ids[static_cast<std::size_t>(index)].load(std::memory_order_acquire);
}

}  // namespace lumo
