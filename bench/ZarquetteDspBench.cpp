// The whole effect in its busiest corner: "Oignons" 1 (recordings start all the
// time), "Nuclear Power" on, "Vin Rouge" 1, "Bof" 0.5, "Gauloises" 1, stereo
// at 44.1 kHz in host blocks of 512. Items are frames, so realtime_x is the
// real-time factor on one core.
#include "lumo/NormalizedParamInterface.h"
#include "sys/ClockPin.h"
#include "zarquette/ZarquetteDsp.h"

#include "StereoNoise.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

namespace
{

constexpr int block = 512;
constexpr float rate = 44100.0f;

void BM_ZarquetteDspBusy(benchmark::State& state)
{
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
    std::vector<float> l(block), r(block), ol(block), orr(block);
    fill_stereo_noise(l, r);
    const float* in[2] = {l.data(), r.data()};
    float* out[2] = {ol.data(), orr.data()};
    // Warm up until the army has many voices going.
    for (int b = 0; b < 400; ++b)
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
BENCHMARK(BM_ZarquetteDspBusy);

}  // namespace
