#include "lumo/lv2/Lv2PortLayout.h"

#include "lumo/AudioPort.h"
#include "lumo/DspInterface.h"

namespace lumo
{

Lv2PortLayout::Lv2PortLayout(const DspInterface& dsp) : _nbr_controls(dsp.get_nbr_param())
{
    for (int p = 0; p < dsp.get_nbr_input_ports(); ++p)
    {
        const AudioPort& port = dsp.use_input_port(p);
        _input_firsts.push_back(static_cast<int>(_input_names.size()));
        _input_counts.push_back(port.get_nbr_channels());
        for (int c = 0; c < port.get_nbr_channels(); ++c)
        {
            _input_names.push_back(port.get_channel_name(c));
        }
    }
    for (int p = 0; p < dsp.get_nbr_output_ports(); ++p)
    {
        const AudioPort& port = dsp.use_output_port(p);
        _output_firsts.push_back(static_cast<int>(_output_names.size()));
        _output_counts.push_back(port.get_nbr_channels());
        for (int c = 0; c < port.get_nbr_channels(); ++c)
        {
            _output_names.push_back(port.get_channel_name(c));
        }
    }
    _atom_out = get_first_control() + static_cast<std::uint32_t>(_nbr_controls) + 1;
}

Lv2PortLayout::Kind Lv2PortLayout::get_kind(std::uint32_t port, int& number) const
{
    struct Range
    {
        Kind kind;
        std::uint32_t first;
        std::uint32_t count;
    };
    const Range ranges[] = {
        {Kind::audio_in, get_first_input(), static_cast<std::uint32_t>(_input_names.size())},
        {Kind::audio_out, get_first_output(), static_cast<std::uint32_t>(_output_names.size())},
        {Kind::control, get_first_control(), static_cast<std::uint32_t>(_nbr_controls)},
        {Kind::atom_in, get_atom_in(), 1},
        {Kind::atom_out, get_atom_out(), 1},
    };
    for (const Range& r : ranges)
    {
        if (port >= r.first && port - r.first < r.count)
        {
            number = static_cast<int>(port - r.first);
            return r.kind;
        }
    }
    number = -1;
    return Kind::none;
}

int Lv2PortLayout::find_channel(const std::vector<int>& firsts, const std::vector<int>& counts, int port, int c)
{
    if (port < 0 || port >= static_cast<int>(firsts.size()) || c < 0 || c >= counts[static_cast<std::size_t>(port)])
    {
        return -1;
    }
    return firsts[static_cast<std::size_t>(port)] + c;
}

int Lv2PortLayout::get_input_channel(int port, int c) const
{
    return find_channel(_input_firsts, _input_counts, port, c);
}

int Lv2PortLayout::get_output_channel(int port, int c) const
{
    return find_channel(_output_firsts, _output_counts, port, c);
}

}  // namespace lumo
