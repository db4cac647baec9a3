#pragma once

#include <array>
#include <atomic>
#include <cstdint>

namespace lumo
{

// Which controller drives which parameter. Each parameter has at most one
// controller and each controller id drives at most one parameter, so the map
// is kept as one controller id per parameter index: a fixed table that the
// audio thread reads (and, while a learn is armed, writes) with neither a
// lock nor an allocation, while the host's thread loads a map into it. Every
// binding is a single atomic word, so a reader sees each binding either
// before or after a concurrent change, never half of it.
class MidiControlMap
{
public:
    // Enough for every parameter and extra control of an effect of this
    // framework; larger indices cannot be bound.
    static constexpr int capacity = 256;
    static constexpr std::int32_t no_id = -1;

    MidiControlMap();

    // index must be 0..capacity-1 and id not negative, else -1. Takes id away
    // from the parameter that had it.
    int bind(int index, std::int32_t id);
    void unbind(int index);
    void clear();

    // The parameter id drives, or -1.
    int find_index(std::int32_t id) const;
    // The controller of a parameter, or no_id.
    std::int32_t get_id(int index) const;
    // One past the highest index ever bound: the end of a walk over the map.
    int get_end() const { return _end.load(std::memory_order_acquire); }

private:
    std::array<std::atomic<std::int32_t>, capacity> _ids;
    std::atomic<int> _end{0};
};

}  // namespace lumo
