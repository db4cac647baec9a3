#include "lumo/lv2/Lv2MidiIn.h"

#include "lumo/lv2/MidiMessageSize.h"
#include "lumo/midi/MidiReceiverInterface.h"

namespace lumo
{

int Lv2MidiIn::deactivate()
{
    detach_channels();
    return 0;
}

int Lv2MidiIn::open()
{
    _active.store(true, std::memory_order_release);
    return 0;
}

int Lv2MidiIn::close()
{
    _active.store(false, std::memory_order_release);
    return 0;
}

void Lv2MidiIn::process_event(const std::uint8_t* bytes, std::uint32_t size, int frame)
{
    if (bytes == nullptr || size == 0 || bytes[0] < 0x80 || bytes[0] >= 0xF0)
    {
        return;
    }
    const std::uint32_t needed = get_midi_message_size(bytes[0]);
    if (size < needed)
    {
        return;
    }
    if (MidiReceiverInterface* receiver = use_receiver())
    {
        receiver->set_event_time(frame);
    }
    dispatch(bytes[0], bytes[1], needed > 2 ? bytes[2] : 0, 0.0);
}

}  // namespace lumo
