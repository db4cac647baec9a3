#include "lumo/AudioPort.h"

#include <utility>

namespace lumo
{

AudioPort::AudioPort(std::string name, std::vector<std::string> channel_names)
    : _name(std::move(name)), _channel_names(std::move(channel_names))
{
}

const std::string& AudioPort::get_channel_name(int channel) const
{
    static const std::string none;
    if (channel < 0 || channel >= get_nbr_channels())
    {
        return none;
    }
    return _channel_names[static_cast<std::size_t>(channel)];
}

}  // namespace lumo
