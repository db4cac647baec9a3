#pragma once

#include "basic/LockFreeRingFifo.h"
#include "lumo/midi/MidiInCcMixin.h"

#include <cstdint>

namespace lumo
{

struct MciMidiApi;

// MIDI from one of the operating system's input ports. The driver's thread
// only pushes the raw message into a ring; the audio thread parses everything
// the ring holds at the start of each block, all at the block's first frame.
class MciMidiIn : public MidiInCcMixin
{
public:
    static constexpr int ring_capacity = 4000;

    struct Event
    {
        std::int32_t status;
        std::int32_t data1;
        std::int32_t data2;
        std::int32_t time;
    };

    // The ring is built here, before the port can deliver into it.
    MciMidiIn(const MciMidiApi& api, unsigned device, int capacity = ring_capacity);
    // Closes the port first, so the driver never pushes into a freed ring.
    ~MciMidiIn() override;
    MciMidiIn(const MciMidiIn&) = delete;
    MciMidiIn& operator=(const MciMidiIn&) = delete;

    int activate() override { return reset_channels(); }
    int deactivate() override;
    int open() override;
    int close() override;
    int block_start() override;

    // The driver's callback (its own thread): instance is the MciMidiIn.
    static void on_driver_message(void* instance, std::uint32_t msg, std::uintptr_t param1, std::uintptr_t param2);

    bool is_open() const { return _handle != nullptr; }

private:
    const MciMidiApi& _api;
    unsigned _device;
    basic::LockFreeRingFifo<Event> _ring;
    void* _handle = nullptr;
};

}  // namespace lumo
