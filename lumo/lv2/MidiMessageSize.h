#pragma once

#include <cstdint>

namespace lumo
{

// Bytes of a MIDI message that starts with status: 3 for notes, pressure,
// controllers and pitch bend, 2 for program change and channel pressure, and
// for system messages as their kind says. 0 for a data byte (no status) and
// for SysEx, whose length only its end byte tells.
std::uint32_t get_midi_message_size(std::uint8_t status);

}  // namespace lumo
