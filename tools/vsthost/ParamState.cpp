#include "ParamState.h"

#include "HostedPlugin.h"

#include <cmath>
#include <sstream>

namespace vsthost
{

std::vector<float> ParamState::capture(HostedPlugin& plugin)
{
    std::vector<float> values;
    for (int i = 0; i < plugin.get_num_params(); ++i)
    {
        values.push_back(plugin.get_param(i));
    }
    return values;
}

void ParamState::randomize(HostedPlugin& plugin, std::mt19937& rng)
{
    std::uniform_real_distribution<float> any(0.0f, 1.0f);
    for (int i = 0; i < plugin.get_num_params(); ++i)
    {
        plugin.set_param(i, any(rng));
    }
}

void ParamState::apply(HostedPlugin& plugin, const std::vector<float>& values)
{
    for (std::size_t i = 0; i < values.size(); ++i)
    {
        plugin.set_param(static_cast<int>(i), values[i]);
    }
}

std::vector<std::string> ParamState::capture_displays(HostedPlugin& plugin)
{
    std::vector<std::string> displays;
    for (int i = 0; i < plugin.get_num_params(); ++i)
    {
        displays.push_back(plugin.get_param_display(i));
    }
    return displays;
}

std::string ParamState::find_difference(HostedPlugin& plugin, const std::vector<float>& expected, double tolerance)
{
    return find_difference(plugin, expected, {}, tolerance);
}

std::string ParamState::find_difference(HostedPlugin& plugin, const std::vector<float>& expected,
                                        const std::vector<std::string>& displays, double tolerance)
{
    const std::vector<float> now = capture(plugin);
    for (std::size_t i = 0; i < expected.size() && i < now.size(); ++i)
    {
        const bool same_display =
            i < displays.size() && plugin.get_param_display(static_cast<int>(i)) == displays[i];
        if (!(std::fabs(static_cast<double>(now[i]) - expected[i]) <= tolerance) && !same_display)
        {
            std::ostringstream msg;
            msg << "parameter " << i << " \"" << plugin.get_param_name(static_cast<int>(i)) << "\" is " << now[i]
                << ", expected " << expected[i];
            return msg.str();
        }
    }
    return now.size() == expected.size() ? std::string() : "the parameter count changed";
}

}  // namespace vsthost
