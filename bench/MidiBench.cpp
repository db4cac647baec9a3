// MIDI in the audio path: parsing a dense controller stream and mapping it onto
// the effect's parameters, alone and inside the whole effect. The stream runs
// over all 16 channels and mixes plain controllers (74, bound to "Oignons")
// with NRPN data entry (the effect's default binding of every parameter).
#include "lumo/NormalizedParamInterface.h"
#include "lumo/ParamPriorityList.h"
#include "lumo/PluginCmdInterface.h"
#include "lumo/midi/MidiInCcMixin.h"
#include "lumo/midi/MidiMgr.h"
#include "sys/ClockPin.h"
#include "zarquette/ZarquetteDsp.h"

#include "StereoNoise.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <vector>

namespace
{

constexpr int block = 512;
constexpr float rate = 44100.0f;

// What the host adapter does with a mapped controller: arbitrate, then set.
class Commands : public lumo::PluginCmdInterface
{
public:
    explicit Commands(lumo::DspInterface& dsp) : _dsp(dsp) { _priorities.resize(dsp.get_nbr_param()); }
    bool is_free(int index, int level) override { return _priorities.is_free(index, level); }
    bool take(int index, int level) override { return _priorities.take(index, level); }
    void release(int index, int level) override { _priorities.release(index, level); }
    bool set_param(int index, float value, int level) override
    {
        if (!_priorities.take(index, level))
        {
            return false;
        }
        _dsp.use_param(index).set_norm_value(value);
        return true;
    }
    void report_param(int /*index*/, float /*value*/) override {}
    bool set_and_report_param(int index, float value, int level) override { return set_param(index, value, level); }
    void set_program(const lumo::ProgramSlot& /*program*/, int /*level*/, bool /*release_after*/,
                     bool /*report_to_host*/) override
    {
    }

private:
    lumo::DspInterface& _dsp;
    lumo::ParamPriorityList _priorities;
};

class BenchIn : public lumo::MidiInCcMixin
{
public:
    int activate() override { return reset_channels(); }
    int deactivate() override { return 0; }
    int open() override { return 0; }
    int close() override { return 0; }
    int block_start() override { return 0; }
};

struct Message
{
    std::uint8_t status, data1, data2;
};

// One message per entry, channels in turn: controller 74, and NRPN selection
// and data entry for the six parameters. Values stay at 127, the state the
// rig starts in, so that MIDI costs only its own work and not a change of
// what the effect renders.
std::vector<Message> make_stream(int n)
{
    std::vector<Message> stream;
    for (int i = 0; i < n; ++i)
    {
        const auto channel = static_cast<std::uint8_t>(i % 16);
        const std::uint8_t value = 127;
        switch ((i / 16) % 4)
        {
        case 0:
            stream.push_back({static_cast<std::uint8_t>(0xB0 | channel), 74, value});
            break;
        case 1:
            stream.push_back({static_cast<std::uint8_t>(0xB0 | channel), 98, static_cast<std::uint8_t>(i % 6)});
            break;
        case 2:
            stream.push_back({static_cast<std::uint8_t>(0xB0 | channel), 6, value});
            break;
        default:
            stream.push_back({static_cast<std::uint8_t>(0xB0 | channel), 38, value});
            break;
        }
    }
    return stream;
}

struct Rig
{
    Rig() : cmd(dsp)
    {
        dsp.init();
        dsp.set_default_state();
        dsp.set_sample_freq(rate);
        mgr.set_dsp(&dsp);
        mgr.set_cmd(&cmd);
        mgr.set_receiver(&dsp);
        mgr.bind_all_to_nrpn();
        mgr.bind(4, 74, 0);
        // The effect's busiest corner, as the stream sets it.
        for (int i = 0; i < dsp.get_nbr_param(); ++i)
        {
            dsp.use_param(i).set_norm_value(i == 4 ? 16256.0f / 16383.0f : 1.0f);
        }
        in.connect(&dsp, &mgr, &dsp);
        in.activate();
    }

    // 10:00 on a cat day: no lunch break.
    sys::ClockPin clock{1000.0, sys::LocalTime{2026, 11, 9, 10, 0, 0}};
    zarquette::ZarquetteDsp dsp;
    Commands cmd;
    lumo::MidiMgr mgr;
    BenchIn in;
};

void BM_MidiParseAndMap(benchmark::State& state)
{
    Rig rig;
    const std::vector<Message> stream = make_stream(16 * 512);
    for (auto _ : state)
    {
        for (const Message& m : stream)
        {
            rig.in.dispatch(m.status, m.data1, m.data2, 0.0);
        }
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * stream.size()));
}
BENCHMARK(BM_MidiParseAndMap);

// The whole effect with one event every range(0) frames (0: no MIDI), in host
// blocks of 512. realtime_x is the real-time factor on one core.
void BM_EffectWithMidi(benchmark::State& state)
{
    Rig rig;
    const int every = static_cast<int>(state.range(0));
    const std::vector<Message> stream = make_stream(every > 0 ? block / every : 0);
    std::vector<float> l(block), r(block), ol(block), orr(block);
    fill_stereo_noise(l, r);
    const float* in[2] = {l.data(), r.data()};
    float* out[2] = {ol.data(), orr.data()};
    for (int b = 0; b < 400; ++b)
    {
        rig.dsp.process_replacing(out, in, block, 0);
    }
    for (auto _ : state)
    {
        rig.mgr.block_start();
        for (const Message& m : stream)
        {
            rig.in.dispatch(m.status, m.data1, m.data2, 0.0);
        }
        rig.dsp.process_replacing(out, in, block, 0);
        rig.mgr.block_end();
        benchmark::DoNotOptimize(ol.data());
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * block);
    state.counters["realtime_x"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * block / rate, benchmark::Counter::kIsRate);
}
BENCHMARK(BM_EffectWithMidi)->Arg(0)->Arg(32)->Arg(1);

}  // namespace
