#include "zarquette/ZarquetteDsp.h"

#include "AllocationCounter.h"
#include "ProcessorRig.h"
#include "lumo/NotificationFlag.h"
#include "lumo/ProgramSlot.h"
#include "sys/TickPin.h"
#include "tests/support/Signal.h"
#include "zarquette/CatArmy.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

namespace
{


using namespace processor_test;
using zq_test::max_difference;
using zq_test::peak;

constexpr std::size_t two_seconds = 88200;

Stereo make_noise(std::size_t n = two_seconds)
{
    zq_test::Noise noise;
    Stereo s(n);
    s.l = noise.take(n, 0.5f);
    s.r = noise.take(n, 0.5f);
    return s;
}

// "Gauloises" sets the recordings' level on an exponential curve, (64^G - 1)
// / 63. "Bof" 0 plays them straight to the output and sends none into the
// loop: the output is the cat army's own. At 1 all of them go through the
// loop, which renders mono: both outputs carry the same signal.
TEST(ZarquetteDsp, GauloisesSetsTheLevelOfTheRecordingsAndBofWhereTheyGo)
{
    const Stereo silence(two_seconds);
    const Stereo out = Processor(true).render(silence, {256});
    zarquette::CatArmy army;
    Stereo cats(two_seconds);
    army.set_oignons(1.0f);
    army.reset();
    army.set_buffers(cats.l.data(), cats.r.data());
    army.render(static_cast<int>(two_seconds));
    ASSERT_GT(peak(cats.l), 0.01f);
    EXPECT_LT(max_difference(out.l, cats.l), 1e-6f);
    EXPECT_LT(max_difference(out.r, cats.r), 1e-6f);

    Processor sent(true);
    sent.set(bof, 1.0f);
    for (const auto& [g, level] : {std::pair<float, float>{0.0f, 0.0f}, {0.5f, 7.0f / 63.0f}, {1.0f, 1.0f}})
    {
        sent.set(gauloises, g);
        sent.render(Stereo(64));
        EXPECT_NEAR(sent.use_dsp().get_cat_level(), level, 1e-6f) << g;
    }
    const Stereo looped = sent.render(silence);
    EXPECT_EQ(looped.l, looped.r);
    EXPECT_GT(peak(looped.l), 0.01f);
}

// One input connected, or no buffer handed for the right one: the loop hears
// the left input alone, whatever the right holds; two: their average (opposite
// inputs cancel). One output connected: it carries the average of the rendered
// channels, and the second buffer is not touched.
TEST(ZarquetteDsp, TheHostsPinsDecideWhatTheLoopHearsAndWhereTheOutputGoes)
{
    const Stereo noise = make_noise();
    Stereo left_twice = noise;
    left_twice.r = noise.l;
    Stereo opposite = noise;
    std::transform(noise.l.begin(), noise.l.end(), opposite.r.begin(), [](float x) { return -x; });
    Processor mono_in;
    mono_in.use_host().stereo_in = false;
    EXPECT_EQ(mono_in.render(noise).l, Processor().render(left_twice).l);
    Stereo out(two_seconds);
    const float* left_only[2] = {noise.l.data(), nullptr};
    float* outputs[2] = {out.l.data(), out.r.data()};
    Processor().use_dsp().process_replacing(outputs, left_only, static_cast<int>(two_seconds), 0);
    EXPECT_EQ(out.l, Processor().render(left_twice).l);
    EXPECT_EQ(Processor().render(opposite).l, Processor().render(Stereo(two_seconds)).l);

    const Stereo s = Processor(true).render(noise);
    Processor mono_out(true);
    mono_out.use_host().stereo_out = false;
    const Stereo m = mono_out.render(noise);
    ASSERT_GT(max_difference(s.l, s.r), 0.01f);
    for (std::size_t i = 0; i < s.l.size(); ++i)
    {
        ASSERT_EQ(m.l[i], (s.l[i] + s.r[i]) * 0.5f) << i;
    }
    EXPECT_EQ(m.r, std::vector<float>(two_seconds, 9.0f));
}

// Host blocks are cut into sub-blocks of 256 frames, the rest last, with the
// parameters handed to the engines before each: a host block of 1000 frames
// renders exactly like host blocks of 256, 256, 256 and 232, and differently
// from blocks of 500 (the engines step in whole sub-blocks).
TEST(ZarquetteDsp, HostBlocksAreCutIntoSubBlocksOf256)
{
    const Stereo noise = make_noise();
    const auto render_cut = [&noise](const std::vector<int>& sizes) {
        Processor p(true);
        p.set(oignons, 0.7f);
        p.set(bof, 0.5f);
        p.set(nuke, 1.0f);
        p.set(vin_rouge, 0.3f);
        return p.render(noise, sizes);
    };
    const Stereo whole = render_cut({1000});
    const Stereo cut = render_cut({256, 256, 256, 232});
    EXPECT_EQ(whole.l, cut.l);
    EXPECT_EQ(whole.r, cut.r);
    EXPECT_GT(max_difference(whole.l, render_cut({500}).l), 1e-6f);
}

// Only a change of rate, on the host's thread, may allocate: the loop's delay
// line follows the rate (44.1 and 48 kHz share a size, so going from one to
// the other keeps it). Rendering never does, with every setting changing on
// the way and the recordings busy, in host blocks of every size up to 300,
// each of which is rendered.
TEST(ZarquetteDsp, OnlyARateChangeAllocates)
{
    Processor p(true);
    const Stereo noise = make_noise(3 * 48000);
    Stereo out(noise.l.size());
    std::vector<int> sizes(300);
    std::iota(sizes.begin(), sizes.end(), 1);
    for (float rate : {192000.0f, 44100.0f, 48000.0f})
    {
        p.set(nuke, rate != 44100.0f ? 1.0f : 0.0f);
        p.set(vin_rouge, rate / 192000.0f);
        p.set(tempo, rate / 192000.0f);
        {
            const AllocationCounter host_thread;
            p.use_dsp().set_sample_freq(rate);
            p.use_dsp().reset();
            EXPECT_EQ(host_thread.get_count() > 0, rate != 48000.0f) << rate;
        }
        std::fill(out.l.begin(), out.l.end(), NAN);  // what a skipped block would leave
        const AllocationCounter audio_thread;
        p.render(noise, out, sizes);
        EXPECT_EQ(audio_thread.get_count(), 0) << rate;
        EXPECT_TRUE(zq_test::all_clean(out.l)) << rate;
        EXPECT_GT(peak(out.l), 0.01f) << rate;
    }
}

// A program whose values equal the current ones wakes no listener (the
// engines and the editor would redo work for nothing); a changed value does.
TEST(ZarquetteDsp, ProgramValuesThatDoNotChangeNotifyNobody)
{
    Processor p;
    lumo::ProgramSlot program;
    p.use_dsp().get_program_data(program);
    ASSERT_EQ(program.get_nbr_values(), 6);
    std::vector<lumo::NotificationFlag> listeners(6);
    for (int i = 0; i < 6; ++i)
    {
        p.use_dsp().use_param(i).set_listener(&listeners[static_cast<std::size_t>(i)]);
    }
    p.use_dsp().set_program_data(program);
    program.set_value(vin_rouge, 0.5f);
    p.use_dsp().set_program_data(program);
    for (int i = 0; i < 6; ++i)
    {
        EXPECT_EQ(listeners[static_cast<std::size_t>(i)].test(), i == vin_rouge) << i;
    }
    EXPECT_EQ(p.use_dsp().use_param(vin_rouge).get_norm(), 0.5f);
}

// Silence from 12:00:00 sharp, sound again from 14:00:00 sharp, and the
// break again on the next day for an instance that stays loaded. The clock is
// read at the start of each sub-block.
TEST(ZarquetteDsp, TheLunchBreakRunsFromNoonSharpToTwoSharpEveryDay)
{
    Processor p(true, sys::LocalTime{2026, 11, 9, 11, 59, 59});  // noon is 1 s away
    p.render(make_noise(44100));
    const Stereo block = make_noise(256);
    const double noon = 1001.0;
    for (const auto& [at, silent] : {std::pair{noon - 0.001, false}, {noon, true}, {noon + 7200.0 - 0.001, true},
                                     {noon + 7200.0, false}, {noon + 86400.0 - 0.001, false}, {noon + 86400.0, true}})
    {
        p.use_clock().set_seconds(at);
        EXPECT_EQ(peak(p.render(block).l) == 0.0f, silent) << "at noon + " << at - noon << " s";
    }
}

// The millisecond tick wraps after 49.7 days of uptime; the lunch break
// must still come at noon, not 17 hours off.
TEST(ZarquetteDsp, TheLunchBreakStaysAtNoonAcrossTheTickWrap)
{
    sys::TickPin tick(0xffffffffu - 30000u);  // 30 s before the wrap
    Processor p(true, sys::LocalTime{2026, 11, 9, 11, 59, 0});
    const Stereo noise = make_noise(44100);
    EXPECT_GT(peak(p.render(noise).l), 0.01f);
    tick.advance_ms(120000);  // 12:01, past the wrap
    EXPECT_EQ(peak(p.render(noise).l), 0.0f);
    tick.advance_ms(7200000);  // 14:01
    EXPECT_GT(peak(p.render(noise).l), 0.01f);
}

}  // namespace
