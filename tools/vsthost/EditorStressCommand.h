#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace vsthost
{

// "vsthost editor-stress PLUGIN --cycles N": opens and closes the editors of
// several instances at once, over and over, while each plays audio, and
// reports whether the process's window objects stay flat and the editor's
// window class is gone after the last window closed. Exits 1 when anything
// leaked.
class EditorStressCommand
{
public:
    static int run(const std::vector<std::string>& words, std::ostream& out);
};

}  // namespace vsthost
