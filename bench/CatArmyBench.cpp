// The cat army at its worst: all 64 voices busy, every one resampling its
// recording to the output rate, rendered in the processor's sub-blocks.
#include "zarquette/CatArmy.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace
{

void BM_CatArmyAllVoicesBusy(benchmark::State& state)
{
    const auto block = static_cast<int>(state.range(0));
    zarquette::CatArmy army(zarquette::SampleSet::get_cats());
    std::vector<float> left(static_cast<std::size_t>(block)), right(static_cast<std::size_t>(block));
    army.set_buffers(left.data(), right.data());
    army.set_sample_freq(44100.0f);
    army.set_oignons(1.0f);
    army.reset();
    zarquette::SamplePlayer& player = army.use_player();
    int next = 0;
    for (auto _ : state)
    {
        // Voices whose recording ended are started again at once.
        while (player.play(next, 0.2f, (next % 9) * 0.25f - 1.0f, 1.0f) == 0)
        {
            next = (next + 1) % player.get_nbr_recordings();
        }
        army.render(block);
        benchmark::DoNotOptimize(left.data());
        benchmark::DoNotOptimize(right.data());
    }
    state.SetItemsProcessed(state.iterations() * block);
    // Seconds of CPU per output frame (shown with an SI prefix: "85n" is 85 ns).
    state.counters["time_per_frame"] =
        benchmark::Counter(block, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

}  // namespace

BENCHMARK(BM_CatArmyAllVoicesBusy)->Arg(256)->Arg(32);
