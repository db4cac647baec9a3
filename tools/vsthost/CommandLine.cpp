#include "CommandLine.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace vsthost
{

namespace
{

bool contains(const std::vector<std::string>& list, const std::string& name)
{
    return std::find(list.begin(), list.end(), name) != list.end();
}

}  // namespace

CommandLine::CommandLine(const std::vector<std::string>& words, const std::vector<std::string>& value_options,
                         const std::vector<std::string>& flag_options)
{
    bool options_ended = false;
    for (std::size_t i = 0; i < words.size(); ++i)
    {
        const std::string& word = words[i];
        if (options_ended || word.size() < 2 || word[0] != '-')
        {
            _positionals.push_back(word);
            continue;
        }
        if (word == "--")
        {
            options_ended = true;
            continue;
        }
        const auto eq = word.find('=');
        const std::string name = word.substr(0, eq);
        if (contains(flag_options, name) && eq == std::string::npos)
        {
            _options.emplace_back(name, "");
        }
        else if (!contains(value_options, name))
        {
            throw std::invalid_argument("unknown option " + name);
        }
        else if (eq != std::string::npos)
        {
            _options.emplace_back(name, word.substr(eq + 1));
        }
        else if (i + 1 < words.size())
        {
            _options.emplace_back(name, words[++i]);
        }
        else
        {
            throw std::invalid_argument("option " + name + " needs a value");
        }
    }
}

bool CommandLine::has(const std::string& name) const
{
    return std::any_of(_options.begin(), _options.end(), [&](const auto& o) { return o.first == name; });
}

std::string CommandLine::get_value(const std::string& name, const std::string& fallback) const
{
    const std::vector<std::string> all = get_values(name);
    return all.empty() ? fallback : all.back();
}

std::vector<std::string> CommandLine::get_values(const std::string& name) const
{
    std::vector<std::string> out;
    for (const auto& o : _options)
    {
        if (o.first == name)
        {
            out.push_back(o.second);
        }
    }
    return out;
}

double CommandLine::get_number(const std::string& name, double fallback, double min, double max) const
{
    return has(name) ? parse_number(name, get_value(name, ""), min, max) : fallback;
}

std::vector<double> CommandLine::get_number_list(const std::string& name, const std::vector<double>& fallback,
                                                 double min, double max) const
{
    if (!has(name))
    {
        return fallback;
    }
    std::vector<double> out;
    std::istringstream in(get_value(name, ""));
    std::string item;
    while (std::getline(in, item, ','))
    {
        out.push_back(parse_number(name, item, min, max));
    }
    if (out.empty())
    {
        throw std::invalid_argument("option " + name + " needs at least one number");
    }
    return out;
}

bool CommandLine::split_assignment(const std::string& text, std::string& name, std::string& value)
{
    const auto eq = text.find('=');
    if (eq == std::string::npos || eq == 0)
    {
        return false;
    }
    name = text.substr(0, eq);
    value = text.substr(eq + 1);
    return true;
}

double CommandLine::parse_number(const std::string& option, const std::string& text, double min, double max)
{
    char* end = nullptr;
    const double v = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != 0 || !std::isfinite(v))
    {
        throw std::invalid_argument("option " + option + ": '" + text + "' is not a number");
    }
    if (v < min || v > max)
    {
        std::ostringstream msg;
        msg << "option " << option << ": " << text << " is outside " << min << " to " << max;
        throw std::invalid_argument(msg.str());
    }
    return v;
}

}  // namespace vsthost
