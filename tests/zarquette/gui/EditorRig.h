#pragma once

// The effect's editor on the real audio side and artwork, built and wired to
// a host service that writes down what it is asked, in an off-screen window.

#include "gadu/OffscreenWindow.h"
#include "tests/lumo/gui/FakeHostGui.h"
#include "zarquette/ZarquetteDsp.h"
#include "zarquette/gui/ZarquetteGui.h"

namespace zq_test
{

struct EditorRig
{
    EditorRig() : window(100, 100)
    {
        dsp.init();
        dsp.set_default_state();
        host = new lumo_test::FakeHostGui();
        gui.set_host(host);
        gui.set_dsp(&dsp);
        gui.set_window(&window);
        gui.init();
        gui.set_default_state();
        host->dsp = &dsp;
        host->gui = &gui;
    }

    zarquette::ZarquetteDsp dsp;
    gadu::OffscreenWindow window;
    // Owned by the editor.
    lumo_test::FakeHostGui* host = nullptr;
    zarquette::ZarquetteGui gui;
};

}  // namespace zq_test
