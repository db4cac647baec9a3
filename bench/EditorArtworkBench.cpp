// The editor's screen with its real artwork, drawn the way the window draws
// it: a full redraw (background, four knobs, the switch) and the redraw of one
// knob's area at a new angle, as a tile. Both must cost nothing a user can feel
// at 60 frames per second.
#include "EditorScreen.h"
#include "Layout.h"

#include <benchmark/benchmark.h>

namespace
{

const artgen::EditorScreen& screen()
{
    static const artgen::EditorScreen s;
    return s;
}

void BM_EditorFullRedraw(benchmark::State& state)
{
    gadu::MemoryRenderingBuffer buffer(artgen::screen_width, artgen::screen_height);
    double values[4] = {0.5, 0.8, 0.3, 1.0};
    for (auto _ : state)
    {
        values[0] = values[0] < 1.0 ? values[0] + 0.001 : 0.0;
        screen().draw(buffer, 0, 0, values, 1, -1);
        benchmark::DoNotOptimize(buffer.pixels());
    }
}
BENCHMARK(BM_EditorFullRedraw)->Unit(benchmark::kMicrosecond);

// The large knob's hit area (80 x 80) as one tile: the background under it,
// then every control that reaches into it.
void BM_LargeKnobTileRedraw(benchmark::State& state)
{
    const artgen::KnobLayout& k = artgen::knob_layouts[0];
    gadu::MemoryRenderingBuffer tile(80, 80);
    double values[4] = {0.0, 0.8, 0.3, 1.0};
    for (auto _ : state)
    {
        values[0] = values[0] < 1.0 ? values[0] + 0.001 : 0.0;
        screen().draw(tile, -(k.centre_x - 40), -(k.centre_y - 40), values, 1, 0);
        benchmark::DoNotOptimize(tile.pixels());
    }
}
BENCHMARK(BM_LargeKnobTileRedraw)->Unit(benchmark::kMicrosecond);

}  // namespace
