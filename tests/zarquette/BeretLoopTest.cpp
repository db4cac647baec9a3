#include "zarquette/BeretLoop.h"

#include "BeretRig.h"

#include <gtest/gtest.h>

#include <cmath>

#include <algorithm>

namespace
{

using beret_test::Buffers;
using zarquette::BeretLoop;

// With "Vin Rouge" at 0 the scratch buffer is written (with zeros) exactly where
// the gate is closed, so a sentinel left in it marks the open samples.
constexpr float kUntouched = 7.0f;

struct GateProbe
{
    explicit GateProbe(std::size_t n) : buf(n)
    {
        std::fill(buf.in.begin(), buf.in.end(), 1.0f);
        std::fill(buf.scratch.begin(), buf.scratch.end(), kUntouched);
        loop.use_beret().set_buffers(buf.out.data(), buf.in.data(), buf.scratch.data());
    }

    bool was_open(std::size_t i) const { return buf.scratch[i] == kUntouched; }

    Buffers buf;
    BeretLoop loop;
};

TEST(BeretLoop, StutterGateOpensFor344SamplesEveryQuarterBeat)
{
    GateProbe probe(3 * 5512);
    probe.loop.set_lengths(1.0f / 64.0f, 0.25f);
    EXPECT_EQ(probe.loop.get_delay_len(), 344);
    EXPECT_EQ(probe.loop.get_period_len(), 5512);
    probe.loop.restart_gate();
    // In pieces of 256, as the processor renders.
    for (int offset = 0; offset < 3 * 5512; offset += 256)
    {
        probe.loop.render(offset, std::min(256, 3 * 5512 - offset));
    }
    for (std::size_t i = 0; i < 3 * 5512; ++i)
    {
        ASSERT_EQ(probe.was_open(i), i % 5512 < 344) << "sample " << i;
    }
}

TEST(BeretLoop, GateStaysOpenWhenTheDelayIsNotShorterThanThePeriod)
{
    GateProbe probe(20000);
    probe.loop.set_lengths(0.5f, 0.25f);
    probe.loop.restart_gate();
    probe.loop.render(0, 20000);
    EXPECT_TRUE(std::all_of(probe.buf.scratch.begin(), probe.buf.scratch.end(),
                            [](float x) { return x == kUntouched; }));
}

TEST(BeretLoop, TempoChangeKeepsThePhaseInBeats)
{
    GateProbe probe(5000);
    probe.loop.restart_gate();
    probe.loop.render(0, 5000);
    probe.loop.set_tempo(60.0f);
    EXPECT_EQ(probe.loop.get_counter(), 10000);
    EXPECT_EQ(probe.loop.get_delay_len(), 22050);
    EXPECT_EQ(probe.loop.get_period_len(), 88200);
    probe.loop.set_tempo(0.0f);  // ignored
    probe.loop.set_tempo(std::nanf(""));
    EXPECT_EQ(probe.loop.get_period_len(), 88200);
}

TEST(BeretLoop, DegenerateLengthsStillMoveOn)
{
    GateProbe probe(1000);
    probe.loop.set_lengths(std::nanf(""), 0.0f);
    EXPECT_GE(probe.loop.get_period_len(), 1);
    probe.loop.set_lengths(-1.0f, 1e30f);
    probe.loop.restart_gate();
    probe.loop.render(0, 1000);  // returns: that is the test
    EXPECT_EQ(probe.loop.get_counter(), 1000);
}

}  // namespace
