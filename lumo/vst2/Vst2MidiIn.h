#pragma once

#include "lumo/midi/MidiInCcMixin.h"
#include "lumo/vst2/Vst2Component.h"

#include <atomic>

namespace lumo
{

namespace vst2
{
struct MidiEvent;
}

// MIDI from the host's event lists, parsed at each event's sample offset.
class Vst2MidiIn : public MidiInCcMixin, public Vst2Component
{
public:
    int activate() override { return reset_channels(); }
    int deactivate() override;
    int open() override;
    int close() override;
    int block_start() override { return 0; }
    void connect_adapter(Vst2Plugin* adapter, MidiMgr* mgr) override;

    bool is_active() const { return _active.load(std::memory_order_acquire); }
    // offset: the event's frame, already checked against the block.
    void process_event(const vst2::MidiEvent& event, int offset);

private:
    std::atomic<bool> _active{false};
};

}  // namespace lumo
