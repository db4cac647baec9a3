#pragma once

#include "lumo/midi/MidiOut4BPacketMixin.h"

namespace lumo
{

struct MciMidiApi;

// MIDI to one of the operating system's output ports, sent at once from
// whichever thread makes the packet.
class MciMidiOut : public MidiOut4BPacketMixin
{
public:
    MciMidiOut(const MciMidiApi& api, unsigned device) : _api(api), _device(device) {}
    ~MciMidiOut() override;
    MciMidiOut(const MciMidiOut&) = delete;
    MciMidiOut& operator=(const MciMidiOut&) = delete;

    int activate() override { return 0; }
    int deactivate() override { return 0; }
    int open() override;
    int close() override;
    int block_start() override { return 0; }
    int send_packet(int b1, int b2, int b3, int b4) override;

private:
    const MciMidiApi& _api;
    unsigned _device;
    void* _handle = nullptr;
};

}  // namespace lumo
