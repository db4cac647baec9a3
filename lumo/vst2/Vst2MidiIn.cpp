#include "lumo/vst2/Vst2MidiIn.h"

#include "lumo/midi/MidiMgr.h"
#include "lumo/midi/MidiReceiverInterface.h"
#include "lumo/vst2/Vst2Abi.h"
#include "lumo/vst2/Vst2Plugin.h"

namespace lumo
{

int Vst2MidiIn::deactivate()
{
    detach_channels();
    return 0;
}

int Vst2MidiIn::open()
{
    _active.store(true, std::memory_order_release);
    return 0;
}

int Vst2MidiIn::close()
{
    _active.store(false, std::memory_order_release);
    return 0;
}

void Vst2MidiIn::connect_adapter(Vst2Plugin* adapter, MidiMgr* mgr)
{
    connect(adapter != nullptr ? adapter->use_dsp() : nullptr, mgr, mgr != nullptr ? mgr->use_receiver() : nullptr);
}

void Vst2MidiIn::process_event(const vst2::MidiEvent& event, int offset)
{
    if (MidiReceiverInterface* receiver = use_receiver())
    {
        receiver->set_event_time(offset);
    }
    const auto byte = [&event](int i) { return static_cast<unsigned char>(event.midi_data[i]); };
    dispatch(byte(0), byte(1), byte(2), event.detune * 0.01);
}

}  // namespace lumo
