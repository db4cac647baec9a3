#include "lumo/midi/MidiOut4BPacketMixin.h"

#include "lumo/midi/MidiMgr.h"

namespace lumo
{
namespace
{

constexpr int status_controller = 0xB0;
constexpr int status_program = 0xC0;

}  // namespace

int MidiOut4BPacketMixin::send_controller(int channel, int controller, int value)
{
    return send_packet(status_controller + channel, controller, value, 0);
}

int MidiOut4BPacketMixin::program_change(int channel, int p)
{
    // Bank select high and low, then the program within the bank. Every
    // packet is offered even when one before it was refused.
    int taken = send_controller(channel, 0, (p / 128) % 128) != 0 ? 1 : 0;
    taken += send_controller(channel, 32, (p / 16384) % 128) != 0 ? 1 : 0;
    taken += send_packet(status_program + channel, p % 128, 0, 0) != 0 ? 1 : 0;
    return taken == 3 ? 1 : 0;
}

int MidiOut4BPacketMixin::send_parameter(int channel, int msb_controller, int lsb_controller, int number, int value)
{
    const MidiMgr* mgr = use_midi_mgr();
    const bool standard = mgr == nullptr || mgr->get_nrpn_compatibility() != 0;
    const int first = standard ? msb_controller : lsb_controller;
    const int second = standard ? lsb_controller : msb_controller;
    int taken = send_controller(channel, first, number / 128) != 0 ? 1 : 0;
    taken += send_controller(channel, second, number % 128) != 0 ? 1 : 0;
    taken += send_controller(channel, 6, value / 128) != 0 ? 1 : 0;
    taken += send_controller(channel, 38, value % 128) != 0 ? 1 : 0;
    return taken == 4 ? 1 : 0;
}

int MidiOut4BPacketMixin::rpn_change(int channel, int number, int value)
{
    return send_parameter(channel, 101, 100, number, value);
}

int MidiOut4BPacketMixin::nrpn_change(int channel, int number, int value)
{
    return send_parameter(channel, 99, 98, number, value);
}

int MidiOut4BPacketMixin::raw_message(int channel, int status, int data1, int data2)
{
    return send_packet(status * 16 + channel, data1, data2, 0);
}

int MidiOut4BPacketMixin::raw_byte(int status)
{
    return send_packet(status, 0, 0, 0);
}

int MidiOut4BPacketMixin::raw_message3(int status, int data1, int data2)
{
    return send_packet(status, data1, data2, 0);
}

}  // namespace lumo
