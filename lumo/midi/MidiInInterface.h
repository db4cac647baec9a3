#pragma once

#include "basic/SerializableInterface.h"
#include "lumo/midi/MidiDevInterface.h"

#include <cstdint>

namespace lumo
{

// A MIDI input: parses channel messages for the receiver, hands controller
// events to the learn manager and saves its channels' state in chunks.
class MidiInInterface : public MidiDevInterface, public basic::SerializableInterface
{
public:
    ~MidiInInterface() override = default;

    virtual void set_pitch_bend_range(float semitones) = 0;
    virtual double get_pitch_bend_range(int channel) const = 0;
    // A controller event: id = selector * 65536 + number, 14-bit value.
    virtual void on_controller(std::int32_t controller_id, std::int32_t value14) = 0;
};

}  // namespace lumo
