#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace vsthost
{

// "vsthost preset save PLUGIN FILE.fxp|FILE.fxb" writes the plug-in's state
// (its current program, or the bank for .fxb) as a host would;
// "vsthost preset load PLUGIN FILE" applies a file and shows the parameters.
class PresetCommand
{
public:
    static int run(const std::vector<std::string>& words, std::ostream& out);
};

}  // namespace vsthost
