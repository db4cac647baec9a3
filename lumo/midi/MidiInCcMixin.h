#pragma once

#include "lumo/midi/MidiInChn.h"

#include <cstdint>

namespace lumo
{

// Adds controller handling to an input: RPN and NRPN numbers assembled from
// controllers 98 to 101 (in the order the learn manager's compatibility mode
// says), data entry by controllers 6 and 38, and a controller event for the
// learn manager, which drives the mapped parameter.
class MidiInCcMixin : public MidiInChn
{
public:
    static constexpr std::int32_t id_shift = 16;
    static constexpr std::int32_t rpn_selector = 101;
    static constexpr std::int32_t nrpn_selector = 99;

    // Maps the event and sets the parameter (at the MIDI priority level) or,
    // for an index beyond the parameters, the DSP's extra value.
    void on_controller(std::int32_t controller_id, std::int32_t value14) override;

protected:
    void handle_controller(MidiChannelState& state, int controller, int value) override;

private:
    // 1: standard order (101/99 carry the high bits); 0: swapped.
    int get_nrpn_compatibility() const;
};

}  // namespace lumo
