#pragma once

#include <atomic>
#include <memory>

namespace lumo
{

class ProgramSlot;

// The values of the current program as parameter changes store them. A change
// may arrive on any thread (host automation, MIDI, the editor), while the
// program bank belongs to the main thread: each value is kept here in an
// atomic and written into the bank's current program by the main thread,
// before anything reads or replaces that program.
class ProgramValueStore
{
public:
    // Fixed for the adapter's life: one value per parameter.
    explicit ProgramValueStore(int nbr_values);

    // The program just chosen; values beyond it stay as they are.
    void load(const ProgramSlot& program);
    // An accepted change of value index; ignored outside the store.
    void store(int index, float value);
    // Writes the stored values into program, as far as it holds values.
    void apply_to(ProgramSlot& program) const;

private:
    int _nbr_values;
    std::unique_ptr<std::atomic<float>[]> _values;
};

}  // namespace lumo
