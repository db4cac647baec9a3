#pragma once

#include "lumo/midi/MidiDevInterface.h"
#include "lumo/midi/MidiReceiverInterface.h"

namespace lumo
{

// A MIDI output: a port that takes receiver calls and sends them as MIDI.
class MidiOutInterface : public MidiDevInterface, public MidiReceiverInterface
{
public:
    ~MidiOutInterface() override = default;
};

}  // namespace lumo
