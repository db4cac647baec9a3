#include "lumo/ProgramValueStore.h"

#include "lumo/ProgramSlot.h"

#include <algorithm>

namespace lumo
{

ProgramValueStore::ProgramValueStore(int nbr_values)
    : _nbr_values(std::max(nbr_values, 0)), _values(new std::atomic<float>[static_cast<std::size_t>(_nbr_values)])
{
    for (int i = 0; i < _nbr_values; ++i)
    {
        _values[static_cast<std::size_t>(i)].store(0.0f, std::memory_order_relaxed);
    }
}

void ProgramValueStore::load(const ProgramSlot& program)
{
    const int n = std::min(_nbr_values, program.get_nbr_values());
    for (int i = 0; i < n; ++i)
    {
        store(i, program.get_value(i));
    }
}

void ProgramValueStore::store(int index, float value)
{
    if (index >= 0 && index < _nbr_values)
    {
        _values[static_cast<std::size_t>(index)].store(value, std::memory_order_relaxed);
    }
}

void ProgramValueStore::apply_to(ProgramSlot& program) const
{
    const int n = std::min(_nbr_values, program.get_nbr_values());
    for (int i = 0; i < n; ++i)
    {
        program.set_value(i, _values[static_cast<std::size_t>(i)].load(std::memory_order_relaxed));
    }
}

}  // namespace lumo
