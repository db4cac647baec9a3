#pragma once

namespace lumo
{

// The sink of parsed MIDI. The audio side implements it; handlers that a
// receiver does not override ignore their message.
class MidiReceiverInterface
{
public:
    virtual ~MidiReceiverInterface() = default;
};

}  // namespace lumo
