#include "lumo/lv2/Lv2MidiOut.h"

#include "lumo/lv2/Lv2SequenceWriter.h"
#include "lumo/lv2/MidiMessageSize.h"

namespace lumo
{
namespace
{

constexpr std::uint32_t largest_message = 3;

}  // namespace

int Lv2MidiOut::activate()
{
    MidiPacketQueue::Packet stale{};
    while (_queue.pop(stale))
    {
    }
    return 0;
}

int Lv2MidiOut::open()
{
    _active.store(true, std::memory_order_release);
    return 0;
}

int Lv2MidiOut::close()
{
    _active.store(false, std::memory_order_release);
    return 0;
}

int Lv2MidiOut::send_packet(int b1, int b2, int b3, int b4)
{
    const MidiPacketQueue::Packet packet{
        {static_cast<std::uint8_t>(b1), static_cast<std::uint8_t>(b2), static_cast<std::uint8_t>(b3),
         static_cast<std::uint8_t>(b4)}};
    return _queue.push(packet) ? 1 : 0;
}

void Lv2MidiOut::drain(Lv2SequenceWriter& out, std::uint32_t midi_event)
{
    MidiPacketQueue::Packet packet{};
    // Nobody listens on an unconnected port: what waits is dropped, so the
    // host does not get stale MIDI once it connects the port.
    while (!out.is_open() && _queue.pop(packet))
    {
    }
    while (out.has_room(largest_message) && _queue.pop(packet))
    {
        const std::uint32_t size = get_midi_message_size(packet.bytes[0]);
        if (size > 0 && is_active())
        {
            out.append(0, midi_event, packet.bytes, size);
        }
    }
}

}  // namespace lumo
