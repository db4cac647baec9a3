#pragma once

#include "Image.h"

#include <string>

namespace vsthost
{

// What a host can learn from outside about the windows an editor made: their
// pixels, the window objects the process holds, the editor's window class.
class WindowProbe
{
public:
    // Objects the process holds; -1 where they cannot be counted.
    struct Counts
    {
        long gdi = -1;
        long user = -1;
        // Counted by looking at every handle, where the system keeps no count.
        bool probed = false;
        // What the two counts are of on this system, in full and for a summary.
        const char* gdi_name = "GDI objects";
        const char* user_name = "USER objects";
        const char* gdi_tag = "GDI";
        const char* user_tag = "USER";
    };

    // A window class and the module that registered it.
    struct WindowClass
    {
        std::string name;
        void* module = nullptr;
    };

    // The client area of the window with its children, as drawn on screen;
    // an empty image when nothing could be captured.
    static Image capture(void* window);
    static Counts get_counts();
    // The class of the window's first child; an empty name when it has none.
    static WindowClass get_child_class(void* window);
    static bool is_registered(const WindowClass& window_class);
    // Whether editors register window classes here at all.
    static bool has_window_classes();
};

}  // namespace vsthost
