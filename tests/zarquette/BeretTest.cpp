#include "zarquette/Beret.h"

#include "BeretRig.h"
#include "zarquette/BeretDelay.h"
#include "zarquette/BeretLoop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace
{

using beret_test::Buffers;
using zarquette::Beret;
using zarquette::BeretDelay;
using zarquette::BeretLoop;

// The signal path on buffers of n samples, its input noise unless silent.
struct Path
{
    explicit Path(std::size_t n, bool noise = true) : buf(n)
    {
        if (noise)
        {
            buf.in = zq_test::Noise().take(n);
        }
        beret.set_buffers(buf.out.data(), buf.in.data(), buf.scratch.data());
    }

    Buffers buf;
    Beret beret;
};

// Linear near zero so that 0 is silent, then exponential up to 256 at 1.
TEST(Beret, VinRougeSetsTheDriveOfTheLiveInput)
{
    Beret beret;
    for (const auto& [vin_rouge, gain] : {std::pair{0.0f, 0.0f}, {0.03125f, 0.052734375f}, {0.0625f, 0.10546875f},
                                          {1.0f / 3.0f, 1.0f}, {1.0f, 256.0f}, {-1.0f, 0.0f}, {7.0f, 256.0f}, {NAN, 0.0f}})
    {
        beret.set_vin_rouge(vin_rouge);
        EXPECT_FLOAT_EQ(beret.get_drive_gain(), gain) << vin_rouge;
    }
}

// The line holds the longest loop, eight seconds, at the rate in use and no
// more (a power of two, so never more than twice that); a delay in seconds
// reads that many samples back at that rate.
TEST(Beret, DelayLineFollowsTheRate)
{
    Beret beret;
    for (float rate : {8000.0f, 44100.0f, 192000.0f, 384000.0f})
    {
        beret.set_sample_freq(rate);
        const int capacity = beret.use_delay().get_capacity();
        EXPECT_GE(capacity, 8.0 * rate + 4.0) << rate;
        EXPECT_LT(capacity, 2.0 * (8.0 * rate + 4.0)) << rate;
        beret.set_delay(0.25);
        EXPECT_EQ(beret.use_delay().get_delay_int(), static_cast<int>(rate / 4.0f) + 1) << rate;
    }
}

// With the gate closed the loop hears the live input only as "Vin Rouge"
// drives it, clipped asymmetrically: not at all at 0 (the output is that of
// silence), 256 times and within [-1.25, 1] at 1. An open gate passes it.
TEST(Beret, ClosedGateDrivesAndClipsTheLiveInput)
{
    Path with_input(8192);
    Path silent(8192, false);
    with_input.beret.render(0, 8192);  // the gate is closed from construction
    silent.beret.render(0, 8192);
    EXPECT_EQ(with_input.buf.out, silent.buf.out);
    with_input.beret.set_gate(true);
    with_input.beret.render(0, 256);
    EXPECT_NE(with_input.buf.out[100], silent.buf.out[100]);

    Path driven(4, false);
    const float in[] = {0.001f, 0.5f, -0.5f, -0.002f};
    std::copy(std::begin(in), std::end(in), driven.buf.in.begin());
    driven.beret.set_vin_rouge(1.0f);
    driven.beret.render(0, 4);
    EXPECT_FLOAT_EQ(driven.buf.scratch[0], 0.256f);
    EXPECT_EQ(driven.buf.scratch[1], 1.0f);
    EXPECT_EQ(driven.buf.scratch[2], -1.25f);
    EXPECT_FLOAT_EQ(driven.buf.scratch[3], -0.512f);
}

TEST(Beret, ResetClearsTheFilterButKeepsTheLoop)
{
    Path p(44100);
    p.beret.set_delay(0.1);
    p.beret.set_gate(true);
    p.beret.render(0, 44100);
    std::fill(p.buf.in.begin(), p.buf.in.end(), 0.0f);
    p.beret.reset();
    p.beret.set_gate(false);  // hold gain 0.75: the recorded tenth of a second repeats
    p.beret.render(0, 8820);
    EXPECT_GT(zq_test::peak(std::vector<float>(p.buf.out.begin() + 4410, p.buf.out.begin() + 8820)), 0.1f);
}

TEST(Beret, SurvivesNonFiniteInputAndGarbageSettings)
{
    Path p(4096);
    p.buf.in[10] = std::nanf("");
    p.buf.in[11] = INFINITY;
    p.buf.in[12] = -INFINITY;
    p.buf.in[13] = 1e30f;
    p.beret.set_sample_freq(std::nanf(""));
    p.beret.set_resonance(INFINITY);
    p.beret.set_drive(-3.0f);
    p.beret.set_hold_gain(std::nanf(""));
    p.beret.set_delay(-1.0);
    p.beret.set_vin_rouge(1.0f);
    p.beret.set_gate(true);
    for (float cutoff : {std::nanf(""), 1e9f})
    {
        p.beret.set_cutoff(cutoff);
        for (int round = 0; round < 10; ++round)
        {
            p.beret.render(0, 4096);
            ASSERT_TRUE(zq_test::all_clean(p.buf.out)) << cutoff;
            ASSERT_LT(zq_test::peak(p.buf.out), 64.0f) << cutoff;
        }
    }
    EXPECT_EQ(p.beret.get_sample_freq(), 44100.0f);
    EXPECT_TRUE(p.beret.state_is_normal());
}

// Four-point Lagrange interpolation reproduces any cubic, at any fractional
// delay; a whole delay reads one tap alone, exactly.
TEST(BeretDelay, ReadsACubicBackExactlyAtAnyDelay)
{
    auto cubic = [](double t) {
        const double u = t / 1000.0;
        return ((0.9 * u - 1.7) * u + 0.6) * u - 0.2;
    };
    for (double delay : {4.0, 37.25, 100.5, 344.53125, 999.9, 11025.0})
    {
        BeretDelay line(1 << 14);
        line.set_gain(0.5f);
        line.set_delay(delay);
        for (int t = 0; t < static_cast<int>(delay) + 200; ++t)
        {
            if (t > delay + 100)
            {
                ASSERT_NEAR(line.read(), 0.5 * cubic(t - delay), 1e-6) << delay << " at " << t;
            }
            line.write(static_cast<float>(cubic(t)));
        }
    }
    BeretDelay line(1 << 14);
    line.set_delay(11025.0);
    EXPECT_EQ(line.get_delay_int(), 11026);
    EXPECT_EQ(line.get_weights(), (std::array<float, 4>{0.0f, 1.0f, 0.0f, 0.0f}));
    // Delays beyond the buffer (1000 rounds up to 1024) or the taps are clamped.
    BeretDelay short_line(1000);
    EXPECT_EQ(short_line.get_capacity(), 1024);
    for (const auto& [delay, clamped] : {std::pair{1e9, 1024}, {-5.0, 4}, {std::nan(""), 4}})
    {
        short_line.set_delay(delay);
        EXPECT_EQ(short_line.get_delay_int(), clamped) << delay;
    }
}

// With "Vin Rouge" at 0 the scratch buffer is written (with zeros) exactly where
// the gate is closed, so a sentinel left in it marks the open samples.
constexpr float kOpen = 7.0f;

struct GateProbe
{
    explicit GateProbe(std::size_t n) : buf(n)
    {
        std::fill(buf.in.begin(), buf.in.end(), 1.0f);
        std::fill(buf.scratch.begin(), buf.scratch.end(), kOpen);
        loop.use_beret().set_buffers(buf.out.data(), buf.in.data(), buf.scratch.data());
        loop.restart_gate();
    }

    Buffers buf;
    BeretLoop loop;
};

// A stutter at 120 BPM, rendered in pieces of 256 as the processor renders:
// the gate is open for the first 1/64 beat of every quarter beat. A delay not
// shorter than the period keeps it open.
TEST(BeretLoop, StutterGateOpensFor344SamplesEveryQuarterBeat)
{
    GateProbe probe(3 * 5512);
    probe.loop.set_lengths(1.0f / 64.0f, 0.25f);
    EXPECT_EQ(probe.loop.get_delay_len(), 344);
    EXPECT_EQ(probe.loop.get_period_len(), 5512);
    for (int offset = 0; offset < 3 * 5512; offset += 256)
    {
        probe.loop.render(offset, std::min(256, 3 * 5512 - offset));
    }
    for (std::size_t i = 0; i < 3 * 5512; ++i)
    {
        ASSERT_EQ(probe.buf.scratch[i] == kOpen, i % 5512 < 344) << "sample " << i;
    }

    GateProbe open(20000);
    open.loop.set_lengths(0.5f, 0.25f);
    open.loop.render(0, 20000);
    EXPECT_EQ(std::count(open.buf.scratch.begin(), open.buf.scratch.end(), kOpen), 20000);
}

// A new tempo keeps the phase in beats; one that is no tempo is ignored, and
// lengths that are no lengths still let the loop move on.
TEST(BeretLoop, TempoChangeKeepsThePhaseInBeats)
{
    GateProbe probe(5000);
    probe.loop.render(0, 5000);
    probe.loop.set_tempo(60.0f);
    probe.loop.set_tempo(0.0f);
    probe.loop.set_tempo(std::nanf(""));
    EXPECT_EQ(probe.loop.get_counter(), 10000);
    EXPECT_EQ(probe.loop.get_delay_len(), 22050);
    EXPECT_EQ(probe.loop.get_period_len(), 88200);
    probe.loop.set_lengths(std::nanf(""), 0.0f);
    EXPECT_GE(probe.loop.get_period_len(), 1);
    probe.loop.set_lengths(-1.0f, 1e30f);
    probe.loop.restart_gate();
    probe.loop.render(0, 5000);  // returns: that is the test
    EXPECT_EQ(probe.loop.get_counter(), 5000);
}

}  // namespace
