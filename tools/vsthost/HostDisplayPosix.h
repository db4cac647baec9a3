#pragma once

#include <X11/Xlib.h>

namespace vsthost
{

// The host tool's one connection to the X display (the one DISPLAY names),
// shared by its editor windows, its captures and its mouse player, opened on
// first use. The tool counts the protocol errors on it, as a host that wants
// to know: a plug-in's mistakes on the host's windows show up here.
class HostDisplayPosix
{
public:
    // Null when there is no display.
    static Display* use();
    static unsigned long get_error_count();
};

}  // namespace vsthost
