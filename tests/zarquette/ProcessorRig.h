#pragma once

// The effect's processor as the entry point builds it, with its clock pinned,
// for the tests that render through the whole of it.

#include "sys/ClockPin.h"
#include "tests/lumo/SettingDspMixinStub.h"
#include "tests/zarquette/ParamIndex.h"
#include "zarquette/ZarquetteDsp.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace processor_test
{

using namespace zq_test::params;

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

// By default at 10:00 on a cat day (no lunch break, the cat set), with the
// recordings silent or, with `cats`, at full level and density.
class Processor
{
public:
    explicit Processor(bool cats = false, const sys::LocalTime& local = sys::LocalTime{2026, 11, 9, 10, 0, 0})
        : _clock(1000.0, local), _dsp(std::make_unique<zarquette::ZarquetteDsp>())
    {
        _dsp->set_host(_host);
        _dsp->init();
        _dsp->set_default_state();
        _dsp->set_sample_freq(44100.0f);
        _dsp->reset();
        set(gauloises, cats ? 1.0f : 0.0f);
        set(oignons, cats ? 1.0f : 0.0f);
    }

    void set(Param p, float value) { _dsp->use_param(p).set_norm_value(value); }
    sys::ClockPin& use_clock() { return _clock; }
    PinHost& use_host() { return *_host; }
    zarquette::ZarquetteDsp& use_dsp() { return *_dsp; }

    // Renders input in host blocks of the given sizes, over and over.
    void render(const Stereo& in, Stereo& out, const std::vector<int>& sizes)
    {
        const int frames = static_cast<int>(in.l.size());
        for (int f = 0, k = 0; f < frames; k = (k + 1) % static_cast<int>(sizes.size()))
        {
            const int n = std::min(sizes[static_cast<std::size_t>(k)], frames - f);
            const float* inputs[2] = {in.l.data() + f, in.r.data() + f};
            float* outputs[2] = {out.l.data() + f, out.r.data() + f};
            _dsp->process_replacing(outputs, inputs, n, 0);
            f += n;
        }
    }

    // The same into fresh outputs, which start out holding garbage.
    Stereo render(const Stereo& in, const std::vector<int>& sizes = {512})
    {
        Stereo out(in.l.size(), 9.0f);
        render(in, out, sizes);
        return out;
    }

private:
    sys::ClockPin _clock;
    PinHost* _host = new PinHost;  // the processor owns it
    std::unique_ptr<zarquette::ZarquetteDsp> _dsp;
};

}  // namespace processor_test
