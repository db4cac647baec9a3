#include "lumo/midi/MidiInChn.h"

#include "lumo/midi/MidiReceiverInterface.h"

#include <cstring>

namespace lumo
{

int MidiInChn::reset_channels()
{
    for (int c = 0; c < nbr_channels; ++c)
    {
        const int err = channel_state(c).reset(use_receiver(), c);
        if (err != 0)
        {
            return err;
        }
    }
    return 0;
}

void MidiInChn::detach_channels()
{
    for (MidiChannelState& state : _channels)
    {
        state.detach();
    }
}

void MidiInChn::dispatch(int status, int data1, int data2, double detune)
{
    status &= 0xFF;
    if (status >= 0xF0)
    {
        return;
    }
    const int d1 = data1 & 0x7F;
    const int d2 = data2 & 0x7F;
    MidiChannelState& state = channel_state(status & 0x0F);
    switch (status & 0xF0)
    {
    case 0x80:
        state.note_off(d1, d2);
        break;
    case 0x90:
        if (d2 != 0)
        {
            state.note_on(d1, d2, detune);
        }
        else
        {
            state.note_off(d1, 0);
        }
        break;
    case 0xA0:
        state.poly_pressure(d1, d2);
        break;
    case 0xB0:
        handle_controller(state, d1, d2);
        state.filter_pedal(d1, d2);
        break;
    case 0xC0:
        state.program_change(d1);
        break;
    case 0xE0:
        state.pitch_bend(d1, d2);
        break;
    default:
        // Channel pressure, and a data byte where a status should be: only
        // passed on whole below.
        break;
    }
    if (MidiReceiverInterface* receiver = state.use_receiver())
    {
        receiver->raw_message(status & 0x0F, status >> 4, d1, d2);
    }
}

void MidiInChn::handle_controller(MidiChannelState& state, int controller, int value)
{
    if (MidiReceiverInterface* receiver = state.use_receiver())
    {
        receiver->control_change(state.get_channel(), controller, value);
    }
}

void MidiInChn::set_pitch_bend_range(float semitones)
{
    for (MidiChannelState& state : _channels)
    {
        state.set_bend_range(semitones);
    }
}

double MidiInChn::get_pitch_bend_range(int channel) const
{
    if (channel < 0 || channel >= nbr_channels)
    {
        return 0.0;
    }
    return channel_state(channel).get_bend_range();
}

std::size_t MidiInChn::get_size() const
{
    return header_size + nbr_channels * MidiChannelState::record_size;
}

int MidiInChn::write(std::uint8_t* data, std::size_t capacity) const
{
    if (data == nullptr || capacity < get_size())
    {
        return -1;
    }
    std::memset(data, 0, header_size);
    std::uint8_t* p = data + header_size;
    for (const MidiChannelState& state : _channels)
    {
        state.write(p, MidiChannelState::record_size);
        p += MidiChannelState::record_size;
    }
    return 0;
}

int MidiInChn::read(const std::uint8_t* data, std::size_t size)
{
    if (data == nullptr || size < get_size())
    {
        return -1;
    }
    const std::uint8_t* p = data + header_size;
    for (MidiChannelState& state : _channels)
    {
        const int err = state.read(p, MidiChannelState::record_size);
        if (err != 0)
        {
            return err;
        }
        p += MidiChannelState::record_size;
    }
    return 0;
}

}  // namespace lumo
