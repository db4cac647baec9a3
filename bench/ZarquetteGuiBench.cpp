// The effect's editor painting itself through the off-screen window: a whole
// frame (background, four knobs, the switch), and the host automating knob 1
// while the editor is open (the change taken from the inbox and only the
// knob's area painted again).
#include "gadu/OffscreenWindow.h"
#include "lumo/NormalizedParamInterface.h"
#include "zarquette/ZarquetteDsp.h"
#include "zarquette/gui/ZarquetteGui.h"

#include <benchmark/benchmark.h>

namespace
{

struct OpenEditor
{
    OpenEditor() : window(100, 100)
    {
        dsp.init();
        dsp.set_default_state();
        gui.set_dsp(&dsp);
        gui.set_window(&window);
        gui.init();
        gui.set_default_state();
        gui.open(nullptr);
        window.paint_all();
    }

    zarquette::ZarquetteDsp dsp;
    gadu::OffscreenWindow window;
    zarquette::ZarquetteGui gui;
};

void BM_EditorFullFrame(benchmark::State& state)
{
    OpenEditor editor;
    for (auto _ : state)
    {
        editor.window.paint_all();
        benchmark::DoNotOptimize(editor.window.use_screen()->pixels());
    }
}
BENCHMARK(BM_EditorFullFrame)->Unit(benchmark::kMicrosecond);

void BM_EditorAutomatedKnob(benchmark::State& state)
{
    OpenEditor editor;
    float value = 0.0f;
    for (auto _ : state)
    {
        value = value < 1.0f ? value + 0.01f : 0.0f;
        editor.dsp.use_param(1).set_norm_value(value);
        editor.gui.param_changed(1, value, 100);
        editor.gui.use_inbox().take();
        editor.window.paint();
        benchmark::DoNotOptimize(editor.window.use_screen()->pixels());
    }
}
BENCHMARK(BM_EditorAutomatedKnob)->Unit(benchmark::kMicrosecond);

}  // namespace
