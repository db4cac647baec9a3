#include "WindowProbe.h"

namespace vsthost
{

// The Linux build opens no windows, so there is nothing to look at.
Image WindowProbe::capture(void*)
{
    return {};
}

WindowProbe::Counts WindowProbe::get_counts()
{
    return {};
}

WindowProbe::WindowClass WindowProbe::get_child_class(void*)
{
    return {};
}

bool WindowProbe::is_registered(const WindowClass&)
{
    return false;
}

}  // namespace vsthost
