#include "lumo/midi/MciMidiIn.h"

#include "lumo/midi/MciMidiApi.h"
#include "lumo/midi/MidiReceiverInterface.h"

namespace lumo
{

MciMidiIn::MciMidiIn(const MciMidiApi& api, unsigned device, int capacity)
    : _api(api), _device(device), _ring(capacity)
{
}

MciMidiIn::~MciMidiIn()
{
    close();
}

int MciMidiIn::deactivate()
{
    detach_channels();
    return 0;
}

int MciMidiIn::open()
{
    if (_handle != nullptr && close() != 0)
    {
        return -1;
    }
    void* handle = nullptr;
    if (_api.in_open(&handle, _device, this) != 0)
    {
        return -1;
    }
    _handle = handle;
    return _api.in_start(_handle) == 0 ? 0 : -1;
}

int MciMidiIn::close()
{
    if (_handle == nullptr)
    {
        return 0;
    }
    if (_api.in_close(_handle) != 0)
    {
        return -1;
    }
    _handle = nullptr;
    return 0;
}

void MciMidiIn::on_driver_message(void* instance, std::uint32_t msg, std::uintptr_t param1, std::uintptr_t param2)
{
    if (instance == nullptr || msg != MciMidiApi::msg_data)
    {
        return;
    }
    const auto packed = static_cast<std::uint32_t>(param1);
    const Event event{static_cast<std::int32_t>(packed & 0xFF), static_cast<std::int32_t>((packed >> 8) & 0xFF),
                      static_cast<std::int32_t>((packed >> 16) & 0xFF), static_cast<std::int32_t>(param2)};
    // A full ring loses the message: the audio thread is far behind anyway.
    static_cast<MciMidiIn*>(instance)->_ring.push(event);
}

int MciMidiIn::block_start()
{
    Event event{};
    while (_ring.pop(event))
    {
        if (MidiReceiverInterface* receiver = use_receiver())
        {
            receiver->set_event_time(0);
        }
        dispatch(event.status, event.data1, event.data2, 0.0);
    }
    return 0;
}

}  // namespace lumo
