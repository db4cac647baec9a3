#pragma once

#include <string>
#include <utility>
#include <vector>

namespace vsthost
{

// The words of one command: positional arguments and options, given as
// "--name value", "--name=value" or, for flags, "--name". "--" ends the
// options. Options that are not declared are refused, so a typo never passes
// silently; every error is a std::invalid_argument with a readable message.
class CommandLine
{
public:
    CommandLine(const std::vector<std::string>& words, const std::vector<std::string>& value_options,
                const std::vector<std::string>& flag_options);

    const std::vector<std::string>& get_positionals() const { return _positionals; }
    bool has(const std::string& name) const;
    // The last value given for the option, or fallback.
    std::string get_value(const std::string& name, const std::string& fallback) const;
    // Every value given for the option, in order.
    std::vector<std::string> get_values(const std::string& name) const;
    // The option as a number within [min, max], or fallback when absent.
    double get_number(const std::string& name, double fallback, double min, double max) const;
    // A comma-separated list of numbers within [min, max], or fallback when absent.
    std::vector<double> get_number_list(const std::string& name, const std::vector<double>& fallback, double min,
                                        double max) const;

    // "NAME=VALUE" into its two sides; false when there is no '=' or no name.
    static bool split_assignment(const std::string& text, std::string& name, std::string& value);
    static double parse_number(const std::string& option, const std::string& text, double min, double max);

private:
    std::vector<std::string> _positionals;
    std::vector<std::pair<std::string, std::string>> _options;
};

}  // namespace vsthost
