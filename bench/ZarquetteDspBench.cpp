// The whole effect in its busiest corner: "Oignons" 1 (recordings start all the
// time), "Nuclear Power" on, "Vin Rouge" 1, "Bof" 0.5, "Gauloises" 1, stereo
// at 44.1 kHz in host blocks of 512, 32 and 1 frames. Items are frames, so
// realtime_x is the real-time factor on one core.
#include "lumo/NormalizedParamInterface.h"
#include "sys/ClockPin.h"
#include "zarquette/ZarquetteDsp.h"

#include "StereoNoise.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

namespace
{

constexpr float rate = 44100.0f;
// Enough audio for the army to have many voices going, whatever the block size.
constexpr int warm_up_frames = 400 * 512;

void BM_ZarquetteDspBusy(benchmark::State& state)
{
    const auto block = static_cast<int>(state.range(0));
    // 10:00 on a cat day: no lunch break.
    sys::ClockPin clock(1000.0, sys::LocalTime{2026, 11, 9, 10, 0, 0});
    zarquette::ZarquetteDsp dsp;
    dsp.init();
    dsp.set_default_state();
    dsp.set_sample_freq(rate);
    const float values[] = {1.0f / 3.0f, 0.5f, 1.0f, 1.0f, 1.0f, 1.0f};
    for (int i = 0; i < 6; ++i)
    {
        dsp.use_param(i).set_norm_value(values[i]);
    }
    const auto size = static_cast<std::size_t>(block);
    std::vector<float> l(size), r(size), ol(size), orr(size);
    fill_stereo_noise(l, r);
    const float* in[2] = {l.data(), r.data()};
    float* out[2] = {ol.data(), orr.data()};
    for (int f = 0; f < warm_up_frames; f += block)
    {
        dsp.process_replacing(out, in, block, 0);
    }
    for (auto _ : state)
    {
        dsp.process_replacing(out, in, block, 0);
        benchmark::DoNotOptimize(ol.data());
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * block);
    state.counters["realtime_x"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * block / rate, benchmark::Counter::kIsRate);
    int busy = 0;
    for (int v = 0; v < zarquette::SamplePlayer::nbr_voices; ++v)
    {
        busy += dsp.use_cat_army().use_player().use_voice(v).is_busy() ? 1 : 0;
    }
    state.counters["voices"] = busy;
}
BENCHMARK(BM_ZarquetteDspBusy)->Arg(512)->Arg(32)->Arg(1);

}  // namespace
