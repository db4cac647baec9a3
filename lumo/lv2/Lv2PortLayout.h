#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace lumo
{

class AudioPort;
class DspInterface;

// Where each port of the plug-in sits: the audio input channels of every
// input port of the audio side in order, then its output channels, one
// control input per parameter, then the atom input (MIDI and the host's
// transport) and the atom output (MIDI to the host). An editor added later
// talks through these same ports.
class Lv2PortLayout
{
public:
    enum class Kind
    {
        audio_in,
        audio_out,
        control,
        atom_in,
        atom_out,
        none
    };

    explicit Lv2PortLayout(const DspInterface& dsp);

    // What a port index is, and its number among the ports of its kind.
    Kind get_kind(std::uint32_t port, int& number) const;
    std::uint32_t get_nbr_ports() const { return _atom_out + 1; }

    int get_nbr_inputs() const { return _inputs.get_count(); }
    int get_nbr_outputs() const { return _outputs.get_count(); }
    int get_nbr_controls() const { return _nbr_controls; }
    const std::string& get_input_name(int channel) const { return _inputs.get_name(channel); }
    const std::string& get_output_name(int channel) const { return _outputs.get_name(channel); }
    // The channel number of channel c of audio port p, or -1.
    int get_input_channel(int port, int c) const { return _inputs.find(port, c); }
    int get_output_channel(int port, int c) const { return _outputs.find(port, c); }
    std::uint32_t get_first_input() const { return 0; }
    std::uint32_t get_first_output() const { return static_cast<std::uint32_t>(get_nbr_inputs()); }
    std::uint32_t get_first_control() const { return get_first_output() + static_cast<std::uint32_t>(get_nbr_outputs()); }
    std::uint32_t get_atom_in() const { return _atom_out - 1; }
    std::uint32_t get_atom_out() const { return _atom_out; }

private:
    // The channels of the audio ports of one direction, numbered in port order.
    class Channels
    {
    public:
        void add_port(const AudioPort& port);
        int get_count() const { return static_cast<int>(_names.size()); }
        const std::string& get_name(int channel) const { return _names[static_cast<std::size_t>(channel)]; }
        int find(int port, int c) const;

    private:
        std::vector<std::string> _names;
        std::vector<int> _firsts;
        std::vector<int> _counts;
    };

    Channels _inputs;
    Channels _outputs;
    int _nbr_controls = 0;
    std::uint32_t _atom_out = 0;
};

}  // namespace lumo
