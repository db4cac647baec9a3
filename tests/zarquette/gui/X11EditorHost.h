#pragma once

// A host's window for the editor on a virtual X server of the test's own
// (named in DISPLAY, as a session names the user's), and real input there.

#include "tests/gadu/x11/X11Rig.h"
#include "tests/zarquette/gui/EditorScreen.h"

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <thread>

namespace zq_test
{

struct X11EditorHost
{
    X11EditorHost()
    {
        ::setenv("DISPLAY", server.get_name().c_str(), 1);
        gadu_test::HostX11::errors = 0;
        if (x11.display != nullptr)
        {
            parent = x11.make_window(1100, 800);
        }
    }

    void* parent_handle() const { return reinterpret_cast<void*>(static_cast<std::uintptr_t>(parent)); }
    Screen screen(int width = 512, int height = 384) const { return x11.capture(parent, width, height); }

    // idle every 2 ms for about ms milliseconds.
    static void idle_for(int ms, const std::function<void()>& idle)
    {
        for (int i = 0; i < ms / 2; ++i)
        {
            idle();
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }

    gadu_test::VirtualDisplay server;
    gadu_test::HostX11 x11{server.get_name()};
    Window parent = 0;
};

}  // namespace zq_test
