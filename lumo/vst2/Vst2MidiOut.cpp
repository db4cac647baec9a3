#include "lumo/vst2/Vst2MidiOut.h"

#include "lumo/vst2/Vst2Plugin.h"

#include <cstring>

namespace lumo
{

int Vst2MidiOut::activate()
{
    for (List& list : _lists)
    {
        std::memset(list.events.data(), 0, sizeof(list.events));
        std::memset(&list.block, 0, sizeof(list.block));
    }
    MidiPacketQueue::Packet stale{};
    while (_queue.pop(stale))
    {
    }
    return 0;
}

int Vst2MidiOut::open()
{
    _active.store(true, std::memory_order_release);
    return 0;
}

int Vst2MidiOut::close()
{
    _active.store(false, std::memory_order_release);
    return 0;
}

void Vst2MidiOut::connect_adapter(Vst2Plugin* adapter, MidiMgr* mgr)
{
    _adapter = adapter;
    connect(adapter != nullptr ? adapter->use_dsp() : nullptr, mgr, nullptr);
}

int Vst2MidiOut::send_packet(int b1, int b2, int b3, int b4)
{
    const MidiPacketQueue::Packet packet{
        {static_cast<std::uint8_t>(b1), static_cast<std::uint8_t>(b2), static_cast<std::uint8_t>(b3),
         static_cast<std::uint8_t>(b4)}};
    return _queue.push(packet) ? 1 : 0;
}

void Vst2MidiOut::fill(List& list)
{
    MidiPacketQueue::Packet packet{};
    int n = 0;
    while (n < capacity && _queue.pop(packet))
    {
        vst2::MidiEvent& event = list.events[static_cast<std::size_t>(n)];
        event = vst2::MidiEvent{};
        event.type = vst2::event_types::midi;
        event.byte_size = sizeof(vst2::MidiEvent);
        std::memcpy(event.midi_data, packet.bytes, sizeof(event.midi_data));
        list.block.events[n] = reinterpret_cast<vst2::Event*>(&event);
        ++n;
    }
    list.block.num_events = n;
}

int Vst2MidiOut::block_start()
{
    List& list = _lists[static_cast<std::size_t>(_current)];
    fill(list);
    if (is_active() && list.block.num_events > 0 && _adapter != nullptr)
    {
        // The block's layout is the host's event list with a longer array.
        _adapter->send_vst_events_to_host(reinterpret_cast<vst2::Events*>(&list.block));
    }
    _current = 1 - _current;
    _lists[static_cast<std::size_t>(_current)].block.num_events = 0;
    return 0;
}

}  // namespace lumo
