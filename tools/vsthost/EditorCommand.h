#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace vsthost
{

// "vsthost editor PLUGIN [IN.wav]": shows the plug-in's editor in a window
// while audio plays through the plug-in in real time, until the user closes
// the window (or --seconds have passed).
class EditorCommand
{
public:
    static int run(const std::vector<std::string>& words, std::ostream& out);
};

}  // namespace vsthost
