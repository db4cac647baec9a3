// What one instance of the effect holds in memory: the bytes it has taken from
// the heap (the processor object included) once it is set up for a rate and
// has rendered a block, at 44.1 kHz and at 192 kHz. The program replaces the
// global operator new to count the bytes alive; "bytes" is the footprint.
#include "sys/ClockPin.h"
#include "zarquette/ZarquetteDsp.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

namespace
{

std::atomic<long long> live_bytes{0};
// Each block starts with its size, on a header that keeps the caller's
// alignment.
constexpr std::size_t header = alignof(std::max_align_t);

long long render_one_instance(float rate)
{
    // 10:00 on a cat day: no lunch break.
    sys::ClockPin clock(1000.0, sys::LocalTime{2026, 11, 9, 10, 0, 0});
    const long long before = live_bytes.load();
    auto dsp = std::make_unique<zarquette::ZarquetteDsp>();
    dsp->init();
    dsp->set_default_state();
    dsp->set_sample_freq(rate);
    constexpr int block = 512;
    std::vector<float> l(block), r(block), ol(block), orr(block);
    const float* in[2] = {l.data(), r.data()};
    float* out[2] = {ol.data(), orr.data()};
    dsp->process_replacing(out, in, block, 0);
    // The host's buffers are not the instance's.
    return live_bytes.load() - before - 4 * block * static_cast<long long>(sizeof(float));
}

void BM_InstanceFootprint(benchmark::State& state)
{
    long long bytes = 0;
    for (auto _ : state)
    {
        bytes = render_one_instance(static_cast<float>(state.range(0)));
    }
    state.counters["bytes"] = static_cast<double>(bytes);
    state.counters["MiB"] = static_cast<double>(bytes) / (1024.0 * 1024.0);
}
BENCHMARK(BM_InstanceFootprint)->Arg(44100)->Arg(192000)->Iterations(3);

}  // namespace

void* operator new(std::size_t n)
{
    auto* p = static_cast<unsigned char*>(std::malloc(n + header));
    if (p == nullptr)
    {
        throw std::bad_alloc();
    }
    *reinterpret_cast<std::size_t*>(p) = n;
    live_bytes += static_cast<long long>(n);
    return p + header;
}

void operator delete(void* p) noexcept
{
    if (p == nullptr)
    {
        return;
    }
    auto* block = static_cast<unsigned char*>(p) - header;
    live_bytes -= static_cast<long long>(*reinterpret_cast<std::size_t*>(block));
    std::free(block);
}

void operator delete(void* p, std::size_t) noexcept
{
    operator delete(p);
}
