#pragma once

#include <string>
#include <vector>

namespace lumo
{

// A named group of 1 or 2 audio channels; a two-channel port is a stereo pair.
class AudioPort
{
public:
    AudioPort(std::string name, std::vector<std::string> channel_names);

    const std::string& get_name() const { return _name; }
    int get_nbr_channels() const { return static_cast<int>(_channel_names.size()); }
    // Empty text for a channel index that does not exist.
    const std::string& get_channel_name(int channel) const;

private:
    std::string _name;
    std::vector<std::string> _channel_names;
};

}  // namespace lumo
