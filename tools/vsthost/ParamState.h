#pragma once

#include <random>
#include <string>
#include <vector>

namespace vsthost
{

class HostedPlugin;

// The normalized values of all parameters of a plug-in, for checks that
// change them and expect them back.
class ParamState
{
public:
    static std::vector<float> capture(HostedPlugin& plugin);
    static void randomize(HostedPlugin& plugin, std::mt19937& rng);
    static void apply(HostedPlugin& plugin, const std::vector<float>& values);
    static std::vector<std::string> capture_displays(HostedPlugin& plugin);
    // Empty when every value is within tolerance, else the first difference.
    static std::string find_difference(HostedPlugin& plugin, const std::vector<float>& expected, double tolerance);
    // The same, but a value that comes back with the display it had (a switch
    // or a stepped parameter that stores only its step) counts as restored.
    static std::string find_difference(HostedPlugin& plugin, const std::vector<float>& expected,
                                       const std::vector<std::string>& displays, double tolerance);
};

}  // namespace vsthost
