#include "lumo/lv2/Lv2PortLayout.h"

#include "lumo/AudioPort.h"
#include "lumo/DspInterface.h"

namespace lumo
{

Lv2PortLayout::Lv2PortLayout(const DspInterface& dsp) : _nbr_controls(dsp.get_nbr_param())
{
    for (int p = 0; p < dsp.get_nbr_input_ports(); ++p)
    {
        _inputs.add_port(dsp.use_input_port(p));
    }
    for (int p = 0; p < dsp.get_nbr_output_ports(); ++p)
    {
        _outputs.add_port(dsp.use_output_port(p));
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
        {Kind::audio_in, get_first_input(), static_cast<std::uint32_t>(get_nbr_inputs())},
        {Kind::audio_out, get_first_output(), static_cast<std::uint32_t>(get_nbr_outputs())},
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

void Lv2PortLayout::Channels::add_port(const AudioPort& port)
{
    _firsts.push_back(get_count());
    _counts.push_back(port.get_nbr_channels());
    for (int c = 0; c < port.get_nbr_channels(); ++c)
    {
        _names.push_back(port.get_channel_name(c));
    }
}

int Lv2PortLayout::Channels::find(int port, int c) const
{
    if (port < 0 || port >= static_cast<int>(_firsts.size()) || c < 0 || c >= _counts[static_cast<std::size_t>(port)])
    {
        return -1;
    }
    return _firsts[static_cast<std::size_t>(port)] + c;
}

}  // namespace lumo
