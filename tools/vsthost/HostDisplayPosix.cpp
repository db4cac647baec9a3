#include "HostDisplayPosix.h"

#include <atomic>

namespace vsthost
{

namespace
{

std::atomic<unsigned long> errors{0};
Display* host_display = nullptr;

int count_error(Display* display, XErrorEvent* /*event*/)
{
    // Other connections in the process (a plug-in's) have handlers of their
    // own installed while they talk to the server; what reaches this one
    // while nobody else listens is counted all the same.
    (void)display;
    ++errors;
    return 0;
}

}  // namespace

Display* HostDisplayPosix::use()
{
    if (host_display == nullptr)
    {
        host_display = XOpenDisplay(nullptr);
        if (host_display != nullptr)
        {
            XSetErrorHandler(&count_error);
        }
    }
    return host_display;
}

unsigned long HostDisplayPosix::get_error_count()
{
    return errors.load();
}

}  // namespace vsthost
