#pragma once

// The effect's editor on the real audio side and artwork, built and wired to
// a host service that writes down what it is asked, in an off-screen window
// whose time is the pinned clock's.

#include "gadu/OffscreenWindow.h"
#include "sys/ClockPin.h"
#include "tests/lumo/gui/FakeHostGui.h"
#include "tests/zarquette/gui/EditorScreen.h"
#include "zarquette/ZarquetteDsp.h"
#include "zarquette/gui/ZarquetteGui.h"

#include <algorithm>

namespace zq_test
{

struct EditorRig
{
    EditorRig() : window(100, 100)
    {
        dsp.init();
        dsp.set_default_state();
        dsp.set_sample_freq(44100.0f);
        dsp.reset();
        host = new lumo_test::FakeHostGui();
        gui.set_host(host);
        gui.set_dsp(&dsp);
        gui.set_window(&window);
        gui.init();
        gui.set_default_state();
        host->dsp = &dsp;
        host->gui = &gui;
        window.set_time(now);
    }

    // Lets time pass as a window on screen would: the clock the controls
    // read, the timer service every 2 ms, and a paint of what changed.
    void wait(double seconds)
    {
        for (double left = seconds; left > 1e-9; left -= 0.002)
        {
            now += std::min(left, 0.002);
            pin.set_seconds(now);
            window.run_timers(std::min(left, 0.002));
            window.paint();
        }
    }

    // What the window shows.
    Screen screen() const
    {
        const std::uint8_t* p = window.use_screen()->pixels();
        Screen shown(zarquette::ZarquetteGui::width * zarquette::ZarquetteGui::height);
        for (std::size_t i = 0; i < shown.size(); ++i, p += 4)
        {
            shown[i] = static_cast<std::uint32_t>(p[2] << 16 | p[1] << 8 | p[0]);
        }
        return shown;
    }

    double now = 100.0;
    sys::ClockPin pin{100.0};
    zarquette::ZarquetteDsp dsp;
    gadu::OffscreenWindow window;
    // Owned by the editor.
    lumo_test::FakeHostGui* host = nullptr;
    zarquette::ZarquetteGui gui;
};

}  // namespace zq_test
