#pragma once

#include "lumo/midi/MidiChannelState.h"
#include "lumo/midi/MidiInInterface.h"

#include <array>

namespace lumo
{

// The part every MIDI input shares: sixteen channel states and the dispatch of
// one complete channel message to them. Controllers go to handle_controller,
// which the controller mixin specialises.
class MidiInChn : public MidiInInterface
{
public:
    static constexpr int nbr_channels = 16;
    static constexpr std::size_t header_size = 4;

    // Resets every channel with the current receiver: 0 or the first failure.
    int reset_channels();
    void detach_channels();

    // One message, complete with its status byte (hosts and drivers expand
    // running status). detune: semitones added to a note-on (host events only).
    void dispatch(int status, int data1, int data2, double detune);

    void set_pitch_bend_range(float semitones) override;
    double get_pitch_bend_range(int channel) const override;
    // channel must be 0..15.
    MidiChannelState& channel_state(int channel) { return _channels[static_cast<std::size_t>(channel)]; }
    const MidiChannelState& channel_state(int channel) const
    {
        return _channels[static_cast<std::size_t>(channel)];
    }

    // basic::SerializableInterface: a 4-byte header, then the 16 channel records.
    int read(const std::uint8_t* data, std::size_t size) override;
    int write(std::uint8_t* data, std::size_t capacity) const override;
    std::size_t get_size() const override;

protected:
    virtual void handle_controller(MidiChannelState& state, int controller, int value);

private:
    std::array<MidiChannelState, nbr_channels> _channels;
};

}  // namespace lumo
