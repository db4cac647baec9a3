// Loop engine throughput: the whole engine in processor-sized blocks with a busy
// pattern, the four-times oversampling chain on its own, and the loop filter on
// its own. Items are samples
// at the host rate, so Google Benchmark's items_per_second divided by 44100 is
// the real-time factor.
#include "dsp/Downsampler2x.h"
#include "dsp/HalfBandDesign.h"
#include "dsp/Upsampler2x.h"
#include "zarquette/BeretCtrl.h"
#include "zarquette/BeretFilter.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <vector>

namespace
{

constexpr int kBlock = 256;
constexpr float kRate = 44100.0f;

void fill_noise(std::array<float, kBlock>& buf)
{
    std::uint32_t state = 1u;
    for (float& x : buf)
    {
        state = state * 1664525u + 1013904223u;
        x = static_cast<float>(state >> 8) * (2.0f / 16777216.0f) - 1.0f;
    }
}

void report(benchmark::State& state)
{
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * kBlock);
    state.counters["realtime_x"] = benchmark::Counter(static_cast<double>(state.iterations()) * kBlock / kRate,
                                                      benchmark::Counter::kIsRate);
}

// "Nuclear Power" on and echoes at a third: resonance, drive, quantised
// feedback and folding all at work, patterns renewed as the passes go by.
void BM_BeretCtrlRender(benchmark::State& state)
{
    std::array<float, kBlock> in{};
    std::array<float, kBlock> out{};
    std::array<float, kBlock> scratch{};
    fill_noise(in);
    zarquette::BeretCtrl ctrl;
    ctrl.set_buffers(out.data(), in.data(), scratch.data());
    ctrl.set_sample_freq(kRate);
    ctrl.set_tempo(static_cast<float>(state.range(0)));
    ctrl.set_nuke(true);
    ctrl.set_vin_rouge(1.0f / 3.0f);
    ctrl.reset();
    for (auto _ : state)
    {
        ctrl.render(kBlock);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    report(state);
}
BENCHMARK(BM_BeretCtrlRender)->Arg(120)->Arg(240);

// Up by two twice, a pass-through where the filter would be, down by two twice,
// each stage over the whole block as the loop engine runs them.
void BM_OversamplingChain(benchmark::State& state)
{
    std::vector<double> steep;
    std::vector<double> gentle;
    dsp::design_half_band(steep, 69.0, 0.01);
    dsp::design_half_band(gentle, 69.0, 0.2);
    dsp::Upsampler2x<8> up_steep;
    dsp::Upsampler2x<3> up_gentle;
    dsp::Downsampler2x<3> down_gentle;
    dsp::Downsampler2x<8> down_steep;
    up_steep.load_coefs(steep);
    down_steep.load_coefs(steep);
    up_gentle.load_coefs(gentle);
    down_gentle.load_coefs(gentle);
    std::array<float, kBlock> in{};
    std::array<float, kBlock> out{};
    std::array<float, 2 * kBlock> twice{};
    std::array<float, 4 * kBlock> four_times{};
    fill_noise(in);
    for (auto _ : state)
    {
        up_steep.upsample_block(in.data(), twice.data(), kBlock);
        up_gentle.upsample_block(twice.data(), four_times.data(), 2 * kBlock);
        down_gentle.downsample_block(twice.data(), four_times.data(), 2 * kBlock);
        down_steep.downsample_block(out.data(), twice.data(), kBlock);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    report(state);
}
BENCHMARK(BM_OversamplingChain);

// The loop filter alone, four samples per host sample, resonant and quantising,
// over a whole block as the loop engine runs it. Each sample waits for the one
// before, so this is the floor under the whole engine: nothing around the
// filter can make the effect faster than this.
void BM_LoopFilterChain(benchmark::State& state)
{
    zarquette::BeretFilter filter;
    filter.set_sample_freq(4.0f * kRate);
    filter.set_cutoff(2000.0f);
    filter.set_resonance(0.9f);
    filter.set_drive(0.5f);
    std::array<float, kBlock> in{};
    fill_noise(in);
    std::array<float, 4 * kBlock> four_times{};
    for (auto _ : state)
    {
        for (int i = 0; i < kBlock; ++i)
        {
            const float x = in[static_cast<std::size_t>(i)];
            const auto at = static_cast<std::size_t>(4 * i);
            four_times[at] = x;
            four_times[at + 1] = -x;
            four_times[at + 2] = 0.5f * x;
            four_times[at + 3] = -0.5f * x;
        }
        filter.process_block<true>(four_times.data(), 4 * kBlock);
        benchmark::DoNotOptimize(four_times.data());
        benchmark::ClobberMemory();
    }
    report(state);
}
BENCHMARK(BM_LoopFilterChain);

}  // namespace
