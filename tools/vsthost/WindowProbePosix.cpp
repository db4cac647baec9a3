#include "WindowProbe.h"

#include "HostDisplayPosix.h"

#include <X11/Xutil.h>
#include <dirent.h>
#include <unistd.h>

#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>

namespace vsthost
{

namespace
{

Window as_window(void* handle)
{
    return static_cast<Window>(reinterpret_cast<std::uintptr_t>(handle));
}

// The channel from one colour mask of the visual, as 8 bits.
std::uint8_t channel(unsigned long pixel, unsigned long mask)
{
    if (mask == 0)
    {
        return 0;
    }
    int shift = 0;
    while (((mask >> shift) & 1u) == 0)
    {
        ++shift;
    }
    const unsigned long max = mask >> shift;
    return static_cast<std::uint8_t>(((pixel & mask) >> shift) * 255u / max);
}

// Every connection to a display, and every file a plug-in forgot, is an open
// file of the process.
long count_open_files()
{
    DIR* dir = opendir("/proc/self/fd");
    if (dir == nullptr)
    {
        return -1;
    }
    long count = 0;
    while (readdir(dir) != nullptr)
    {
        ++count;
    }
    closedir(dir);
    return count;
}

// Shared-memory segments that this process made and that still exist: a
// frame buffer shared with the server that was never given back stays in the
// system after the process ends.
long count_shared_segments()
{
    std::ifstream list("/proc/sysvipc/shm");
    if (!list)
    {
        return -1;
    }
    std::string line;
    std::getline(list, line);
    long count = 0;
    const long self = static_cast<long>(getpid());
    while (std::getline(list, line))
    {
        std::istringstream fields(line);
        long key = 0;
        long id = 0;
        long perms = 0;
        long size = 0;
        long creator = 0;
        fields >> key >> id >> perms >> size >> creator;
        count += creator == self ? 1 : 0;
    }
    return count;
}

}  // namespace

Image WindowProbe::capture(void* window)
{
    Display* display = HostDisplayPosix::use();
    XWindowAttributes attributes{};
    if (display == nullptr || window == nullptr || XGetWindowAttributes(display, as_window(window), &attributes) == 0)
    {
        return {};
    }
    XSync(display, False);
    // The window's pixels as the screen shows them, the plug-in's child included.
    XImage* pixels = XGetImage(display, as_window(window), 0, 0, static_cast<unsigned>(attributes.width),
                               static_cast<unsigned>(attributes.height), AllPlanes, ZPixmap);
    if (pixels == nullptr)
    {
        return {};
    }
    Image image(attributes.width, attributes.height);
    const Visual* visual = attributes.visual;
    for (int y = 0; y < attributes.height; ++y)
    {
        for (int x = 0; x < attributes.width; ++x)
        {
            const unsigned long pixel = XGetPixel(pixels, x, y);
            std::uint8_t* out = &image.rgba[(static_cast<std::size_t>(y) * attributes.width + x) * 4];
            out[0] = channel(pixel, visual->red_mask);
            out[1] = channel(pixel, visual->green_mask);
            out[2] = channel(pixel, visual->blue_mask);
            out[3] = 255;
        }
    }
    XDestroyImage(pixels);
    return image;
}

WindowProbe::Counts WindowProbe::get_counts()
{
    Counts counts;
    counts.gdi = count_open_files();
    counts.user = count_shared_segments();
    counts.gdi_name = "open files (display connections among them)";
    counts.user_name = "shared-memory segments";
    counts.gdi_tag = "files";
    counts.user_tag = "shared memory";
    return counts;
}

// X11 has no window classes: a plug-in leaves nothing registered behind.
WindowProbe::WindowClass WindowProbe::get_child_class(void*)
{
    return {};
}

bool WindowProbe::is_registered(const WindowClass&)
{
    return false;
}

bool WindowProbe::has_window_classes()
{
    return false;
}

}  // namespace vsthost
