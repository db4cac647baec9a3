#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace vsthost
{

// "vsthost editor-bench PLUGIN": what an open editor costs the host's editor
// thread. First the idle cost: the editor open and untouched while the host
// idles it at the usual pace, as a share of one core, beside the share of the
// host's own message loop with the editor closed. Then whole frames: the
// host makes the editor's whole window dirty, and the time the editor takes
// to paint it (in the window system's paint message on Windows, in the next
// idle call on X11) is each frame's time.
class EditorBenchCommand
{
public:
    static int run(const std::vector<std::string>& words, std::ostream& out);
};

}  // namespace vsthost
