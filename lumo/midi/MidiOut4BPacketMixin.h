#pragma once

#include "lumo/midi/MidiOutInterface.h"

namespace lumo
{

// Turns receiver calls into packets of four bytes (status, two data bytes and
// a zero) for send_packet. A call answers non-zero only when every packet it
// made was taken.
class MidiOut4BPacketMixin : public MidiOutInterface
{
public:
    int program_change(int channel, int program) override;
    int rpn_change(int channel, int number, int value) override;
    int nrpn_change(int channel, int number, int value) override;
    int raw_message(int channel, int status, int data1, int data2) override;
    int raw_byte(int status) override;
    int raw_message3(int status, int data1, int data2) override;

private:
    int send_controller(int channel, int controller, int value);
    // Number (in the order the compatibility mode says) then data entry.
    int send_parameter(int channel, int msb_controller, int lsb_controller, int number, int value);
};

}  // namespace lumo
