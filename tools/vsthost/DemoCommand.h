#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace vsthost
{

// "vsthost demo -o OUT.wav": the built-in demo song as a WAV file, the dry
// signal that render plays by default, for hosts and tools that read files.
class DemoCommand
{
public:
    static int run(const std::vector<std::string>& words, std::ostream& out);
};

}  // namespace vsthost
