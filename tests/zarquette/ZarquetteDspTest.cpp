#include "zarquette/ZarquetteDsp.h"

#include "lumo/NormalizedParamInterface.h"
#include "lumo/NotifiedInterface.h"
#include "lumo/ProgramSlot.h"
#include "sys/ClockPin.h"
#include "sys/TickPin.h"
#include "tests/lumo/SettingDspMixinStub.h"
#include "zarquette/CatArmy.h"

#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace
{

using zarquette::ZarquetteDsp;

enum Param
{
    tempo,
    bof,
    gauloises,
    nuke,
    oignons,
    vin_rouge
};

// Host services whose second input and output can be unplugged.
class PinHost : public zq_test::ReorderHost
{
public:
    bool is_input_connected(int /*port*/, int channel) override { return channel == 0 || stereo_in; }
    bool is_output_connected(int /*port*/, int channel) override { return channel == 0 || stereo_out; }
    bool stereo_in = true;
    bool stereo_out = true;
};

struct Stereo
{
    explicit Stereo(std::size_t n, float fill = 0.0f) : l(n, fill), r(n, fill) {}
    std::vector<float> l;
    std::vector<float> r;
};

// One processor as the entry point builds it, by default at 10:00 on a cat day.
class Processor
{
public:
    explicit Processor(const sys::LocalTime& local = sys::LocalTime{2026, 11, 9, 10, 0, 0})
        : _clock(1000.0, local), _dsp(std::make_unique<ZarquetteDsp>())
    {
        _dsp->set_host(_host);
        _dsp->init();
        _dsp->set_default_state();
        _dsp->set_sample_freq(44100.0f);
        _dsp->reset();
    }

    void set(Param p, float value) { _dsp->use_param(p).set_norm_value(value); }
    sys::ClockPin& use_clock() { return _clock; }
    PinHost& use_host() { return *_host; }
    ZarquetteDsp& use_dsp() { return *_dsp; }

    // Renders input in host blocks of the given sizes, over and over; the
    // outputs start out holding garbage.
    Stereo render(const Stereo& in, const std::vector<int>& sizes = {512})
    {
        Stereo out(in.l.size(), 9.0f);
        const int frames = static_cast<int>(in.l.size());
        for (int f = 0, k = 0; f < frames; k = (k + 1) % static_cast<int>(sizes.size()))
        {
            const int n = std::min(sizes[static_cast<std::size_t>(k)], frames - f);
            const float* inputs[2] = {in.l.data() + f, in.r.data() + f};
            float* outputs[2] = {out.l.data() + f, out.r.data() + f};
            _dsp->process_replacing(outputs, inputs, n, 0);
            f += n;
        }
        return out;
    }

private:
    sys::ClockPin _clock;
    PinHost* _host = new PinHost;  // the processor owns it
    std::unique_ptr<ZarquetteDsp> _dsp;
};

Stereo make_noise(std::size_t n)
{
    zq_test::Noise noise;
    Stereo s(n);
    s.l = noise.take(n, 0.5f);
    s.r = noise.take(n, 0.5f);
    return s;
}

using zq_test::max_difference;
using zq_test::peak;

constexpr std::size_t two_seconds = 88200;

TEST(ZarquetteDsp, GauloisesSetsTheSampleLevelOnAnExponentialCurve)
{
    Processor p;
    const Stereo silence(64);
    for (const auto& [g, level] : {std::pair<float, float>{0.0f, 0.0f}, {0.5f, 7.0f / 63.0f}, {1.0f, 1.0f}})
    {
        p.set(gauloises, g);
        p.render(silence);
        EXPECT_NEAR(p.use_dsp().get_cat_level(), level, 1e-6f) << g;
    }
}

// "Bof" 0 plays the recordings straight to the output and sends none into the
// loop: the output is the cat army's own. At 1 all of them go through the
// loop, which renders mono: both outputs carry the same signal.
TEST(ZarquetteDsp, BofSplitsTheRecordingsBetweenOutputAndLoop)
{
    const Stereo silence(two_seconds);
    Processor direct;
    direct.set(gauloises, 1.0f);
    direct.set(oignons, 1.0f);
    const Stereo out = direct.render(silence, {256});

    zarquette::CatArmy army;
    Stereo cats(two_seconds);
    army.set_oignons(1.0f);
    army.reset();
    army.set_buffers(cats.l.data(), cats.r.data());
    army.render(static_cast<int>(two_seconds));
    ASSERT_GT(peak(cats.l), 0.01f);
    EXPECT_LT(max_difference(out.l, cats.l), 1e-6f);
    EXPECT_LT(max_difference(out.r, cats.r), 1e-6f);

    Processor sent;
    sent.set(gauloises, 1.0f);
    sent.set(oignons, 1.0f);
    sent.set(bof, 1.0f);
    const Stereo looped = sent.render(silence);
    EXPECT_EQ(looped.l, looped.r);
    EXPECT_GT(peak(looped.l), 0.01f);
}

// One input connected: the loop hears the left input alone, whatever the
// right holds; two: their average (opposite inputs cancel). One output
// connected: it carries the average of the rendered channels, and the second
// buffer is not touched.
TEST(ZarquetteDsp, TheHostsPinsDecideWhatTheLoopHearsAndWhereTheOutputGoes)
{
    const Stereo noise = make_noise(two_seconds);
    Stereo left_twice = noise;
    left_twice.r = noise.l;
    Stereo opposite = noise;
    std::transform(noise.l.begin(), noise.l.end(), opposite.r.begin(), [](float x) { return -x; });
    Processor mono_in;
    mono_in.use_host().stereo_in = false;
    EXPECT_EQ(mono_in.render(noise).l, Processor().render(left_twice).l);
    EXPECT_EQ(Processor().render(opposite).l, Processor().render(Stereo(two_seconds)).l);

    Processor stereo;
    Processor mono_out;
    mono_out.use_host().stereo_out = false;
    for (Processor* p : {&stereo, &mono_out})
    {
        p->set(gauloises, 1.0f);
        p->set(oignons, 1.0f);
    }
    const Stereo s = stereo.render(noise);
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
    const Stereo noise = make_noise(two_seconds);
    const auto render_cut = [&noise](const std::vector<int>& sizes) {
        Processor p;
        p.set(gauloises, 1.0f);
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

class CountingListener : public lumo::NotifiedInterface
{
public:
    void notify(lumo::NotifierInterface& /*notifier*/) override { ++count; }
    int count = 0;
};

// A program whose values equal the current ones wakes no listener (the
// engines and the editor would redo work for nothing); a changed value does.
TEST(ZarquetteDsp, ProgramValuesThatDoNotChangeNotifyNobody)
{
    Processor p;
    lumo::ProgramSlot program;
    p.use_dsp().get_program_data(program);
    ASSERT_EQ(program.get_nbr_values(), 6);
    std::vector<CountingListener> listeners(6);
    std::vector<lumo::NotifiedInterface*> engines;
    for (int i = 0; i < 6; ++i)
    {
        engines.push_back(p.use_dsp().use_param(i).use_listener());
        p.use_dsp().use_param(i).set_listener(&listeners[static_cast<std::size_t>(i)]);
    }
    p.use_dsp().set_program_data(program);
    program.set_value(vin_rouge, 0.5f);
    p.use_dsp().set_program_data(program);
    for (int i = 0; i < 6; ++i)
    {
        EXPECT_EQ(listeners[static_cast<std::size_t>(i)].count, i == vin_rouge ? 1 : 0) << i;
        p.use_dsp().use_param(i).set_listener(engines[static_cast<std::size_t>(i)]);
    }
    EXPECT_EQ(p.use_dsp().use_param(vin_rouge).get_norm(), 0.5f);
}

// Silence from 12:00:00 sharp, sound again from 14:00:00 sharp, and the
// break again on the next day for an instance that stays loaded. The clock is
// read at the start of each sub-block.
TEST(ZarquetteDsp, TheLunchBreakRunsFromNoonSharpToTwoSharpEveryDay)
{
    Processor p(sys::LocalTime{2026, 11, 9, 11, 59, 59});  // noon is 1 s away
    p.set(gauloises, 1.0f);
    p.set(oignons, 1.0f);
    const Stereo noise = make_noise(44100);
    const Stereo block = make_noise(256);
    p.render(noise);
    const double noon = 1001.0;
    const struct
    {
        double at;
        bool silent;
    } edges[] = {{noon - 0.001, false},         {noon, true},
                 {noon + 7200.0 - 0.001, true}, {noon + 7200.0, false},
                 {noon + 86400.0 - 0.001, false}, {noon + 86400.0, true}};
    for (const auto& edge : edges)
    {
        p.use_clock().set_seconds(edge.at);
        const float loudest = peak(p.render(block).l);
        EXPECT_EQ(loudest == 0.0f, edge.silent) << "at noon + " << edge.at - noon << " s";
    }
}

// The millisecond tick wraps after 49.7 days of uptime; the lunch break
// must still come at noon, not 17 hours off.
TEST(ZarquetteDsp, TheLunchBreakStaysAtNoonAcrossTheTickWrap)
{
    sys::TickPin tick(0xffffffffu - 30000u);  // 30 s before the wrap
    Processor p(sys::LocalTime{2026, 11, 9, 11, 59, 0});
    p.set(gauloises, 1.0f);
    p.set(oignons, 1.0f);
    const Stereo noise = make_noise(44100);
    EXPECT_GT(peak(p.render(noise).l), 0.01f);
    tick.advance_ms(120000);  // 12:01, past the wrap
    EXPECT_EQ(peak(p.render(noise).l), 0.0f);
    tick.advance_ms(7200000);  // 14:01
    EXPECT_GT(peak(p.render(noise).l), 0.01f);
}

}  // namespace
