#pragma once

#include "tests/support/Signal.h"
#include "zarquette/BeretCtrl.h"

#include <algorithm>
#include <vector>

namespace beret_test
{

// Work buffers the way the processor lends them to the loop engine, big enough
// for a whole test run in one call when a test wants that.
struct Buffers
{
    explicit Buffers(std::size_t n) : in(n, 0.0f), out(n, 0.0f), scratch(n, 0.0f) {}

    std::vector<float> in;
    std::vector<float> out;
    std::vector<float> scratch;
};

// A loop engine as the processor sets it up, with noise at its input.
struct Engine
{
    static constexpr int kBlock = 256;

    explicit Engine(float rate = 44100.0f, float vin_rouge = 0.5f) : buf(kBlock)
    {
        buf.in = zq_test::Noise().take(kBlock);
        ctrl.set_buffers(buf.out.data(), buf.in.data(), buf.scratch.data());
        ctrl.set_sample_freq(rate);
        ctrl.set_tempo(120.0f);
        ctrl.set_vin_rouge(vin_rouge);
        ctrl.reset();
    }

    // Renders `total` samples in processor-sized pieces; whether every output
    // sample was finite and normal.
    bool render(long total)
    {
        bool clean = true;
        for (; total > 0; total -= kBlock)
        {
            const int n = static_cast<int>(std::min<long>(total, kBlock));
            ctrl.render(n);
            clean = clean && std::all_of(buf.out.begin(), buf.out.begin() + n, zq_test::is_clean);
        }
        return clean;
    }

    Buffers buf;
    zarquette::BeretCtrl ctrl;
};

}  // namespace beret_test
