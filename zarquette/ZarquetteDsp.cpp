#include "zarquette/ZarquetteDsp.h"

#include "lumo/HostDspInterface.h"
#include "lumo/ProgramSlot.h"
#include "lumo/SettingKeys.h"
#include "lumo/midi/MidiMgr.h"
#include "sys/Clock.h"
#include "zarquette/ParamTempo.h"
#include "zarquette/ZarquetteIdentity.h"

#include <algorithm>
#include <cmath>

namespace zarquette
{
namespace
{

enum ParamIndex
{
    tempo_index,
    bof_index,
    gauloises_index,
    nuke_index,
    oignons_index,
    vin_rouge_index
};

constexpr double seconds_per_day = 86400.0;
constexpr double lunch_break_s = 7200.0;

// A host that sends NaN or infinity must not poison the loop engine's delay line.
float finite_or_zero(float x)
{
    return std::isfinite(x) ? x : 0.0f;
}

// The seconds-clock reading at which today's (or the coming) noon falls.
double noon_on_clock()
{
    const double now = sys::get_clock_s();
    const sys::LocalTime t = sys::get_local_time();
    return now + ((12.0 - t.hour) * 60.0 - t.minute) * 60.0 - t.second;
}

}  // namespace

ZarquetteDsp::ZarquetteDsp()
    : _input_port(ZarquetteIdentity::make_input_port()),
      _output_port(ZarquetteIdentity::make_output_port()),
      _clock_origin(noon_on_clock())
{
    _cat_army.set_buffers(_cat_l.data(), _cat_r.data());
    _beret_ctrl.set_buffers(_beret_out.data(), _beret_in.data(), _beret_tmp.data());
}

ZarquetteDsp::~ZarquetteDsp()
{
    delete _host;
}

void ZarquetteDsp::set_host(lumo::HostDspInterface* host)
{
    if (host != _host)
    {
        delete _host;
    }
    _host = host;
}

void ZarquetteDsp::setup_midi()
{
    lumo::MidiMgr* midi = _host != nullptr ? _host->use_midi_mgr() : nullptr;
    if (midi == nullptr)
    {
        return;
    }
    midi->load_options(get_setting_str(lumo::setting_key::plugin_name));
    // Every parameter answers the NRPN of its own index, and so does every
    // extra control beyond them.
    midi->bind_all_to_nrpn();
    for (int k = 0; k < get_nbr_components_a(); ++k)
    {
        midi->bind(nbr_params + k, lumo::MidiMgr::nrpn_selector, nbr_params + k);
    }
}

bool ZarquetteDsp::host_can_tempo() const
{
    return _host != nullptr && _host->get_setting_num(lumo::setting_key::can_tempo) != 0.0;
}

ParamTempo& ZarquetteDsp::use_tempo_param() const
{
    return static_cast<ParamTempo&>(*_slots[tempo_index].param);
}

void ZarquetteDsp::init()
{
    ZarquetteIdentity::add_params(*this);
    for (int i = 0; i < nbr_params; ++i)
    {
        auto& slot = _slots[static_cast<std::size_t>(i)];
        slot.param = &use_registered_param(i);
        slot.param->set_listener(&slot.flag);
    }
    use_tempo_param().set_use_host_tempo(host_can_tempo());
    setup_midi();
    setup_setting_mgr();
}

void ZarquetteDsp::set_default_state()
{
    for (int i = 0; i < nbr_params; ++i)
    {
        use_param(i).set_nat_value(i == tempo_index ? 120.0 : 0.0);
    }
    reset();
}

void ZarquetteDsp::restore()
{
    for (auto& slot : _slots)
    {
        slot.param = nullptr;
    }
    clear_registry();
}

lumo::NormalizedParamInterface& ZarquetteDsp::use_param(int index)
{
    return use_registered_param(index);
}

void ZarquetteDsp::set_sample_freq(float hz)
{
    _sample_freq = hz;
    _cat_army.set_sample_freq(hz);
    _beret_ctrl.set_sample_freq(hz);
}

double ZarquetteDsp::get_setting_num(const char* key) const
{
    if (lumo::is_setting_key(key, lumo::setting_key::can_mono))
    {
        return 1.0;
    }
    if (lumo::is_setting_key(key, lumo::setting_key::plugin_version))
    {
        return 1.12;
    }
    return 0.0;
}

std::string ZarquetteDsp::get_setting_str(const char* key) const
{
    if (lumo::is_setting_key(key, lumo::setting_key::plugin_name))
    {
        return ZarquetteIdentity::plugin_name;
    }
    if (lumo::is_setting_key(key, lumo::setting_key::manufacturer))
    {
        return "Velnor";
    }
    if (lumo::is_setting_key(key, lumo::setting_key::plugin_category))
    {
        return "effect";
    }
    return std::string();
}

void ZarquetteDsp::reset()
{
    _reset_pending.store(true, std::memory_order_release);
    if (_slots[tempo_index].param != nullptr)
    {
        use_tempo_param().set_use_host_tempo(host_can_tempo());
    }
}

void ZarquetteDsp::set_tempo(float bpm)
{
    if (_slots[tempo_index].param == nullptr)
    {
        return;
    }
    use_tempo_param().set_use_host_tempo(host_can_tempo());
    // A tempo that cannot be folded into 60 .. 240 by octaves means nothing.
    if (!(bpm > 0.0f) || !std::isfinite(bpm))
    {
        return;
    }
    while (bpm < 60.0f)
    {
        bpm *= 2.0f;
    }
    while (bpm > 240.0f)
    {
        bpm *= 0.5f;
    }
    use_tempo_param().set_host_tempo(bpm);
}

void ZarquetteDsp::set_program_data(const lumo::ProgramSlot& program)
{
    const int n = std::min(program.get_nbr_values(), get_nbr_registered_params());
    for (int i = 0; i < n; ++i)
    {
        lumo::NormalizedParamInterface& p = use_param(i);
        const float v = program.get_value(i);
        if (v != p.get_norm())
        {
            p.set_norm_value(v);
        }
    }
}

void ZarquetteDsp::get_program_data(lumo::ProgramSlot& program)
{
    get_param_values(program);
}

// ---- Audio ------------------------------------------------------------------------

void ZarquetteDsp::process_replacing(float* const* outputs, const float* const* inputs, int frames, int /*reserved*/)
{
    process_block(outputs, inputs, frames);
}

void ZarquetteDsp::process_adding(float* const* outputs, const float* const* inputs, int frames, int /*reserved*/)
{
    process_block(outputs, inputs, frames);
}

void ZarquetteDsp::process_block(float* const* outputs, const float* const* inputs, int frames)
{
    if (frames <= 0 || outputs == nullptr || inputs == nullptr || outputs[0] == nullptr || inputs[0] == nullptr
        || _slots[tempo_index].param == nullptr)
    {
        return;
    }
    if (_reset_pending.exchange(false, std::memory_order_acq_rel))
    {
        update_engines();
        _cat_army.reset();
        _beret_ctrl.reset();
        for (auto* buf : {&_cat_l, &_cat_r, &_beret_in, &_beret_out, &_beret_tmp})
        {
            buf->fill(0.0f);
        }
    }
    _stereo_in = _host == nullptr || _host->is_input_connected(0, 1);
    _stereo_out = _host == nullptr || _host->is_output_connected(0, 1);
    _stereo_in = _stereo_in && inputs[1] != nullptr;
    _stereo_out = _stereo_out && outputs[1] != nullptr;
    for (int f = 0; f < frames; f += max_sub_block)
    {
        const int n = std::min(max_sub_block, frames - f);
        update_engines();
        read_input(inputs, f, n);
        render_sub_block(n);
        write_output(outputs, f, n);
    }
}

void ZarquetteDsp::update_engines()
{
    for (int i = 0; i < nbr_params; ++i)
    {
        auto& slot = _slots[static_cast<std::size_t>(i)];
        if (slot.flag.test_and_clear())
        {
            apply_param(i, slot.param->get_nat_value());
        }
    }
}

void ZarquetteDsp::apply_param(int index, double value)
{
    const auto v = static_cast<float>(value);
    switch (index)
    {
    case tempo_index:
        _beret_ctrl.set_tempo(v);
        break;
    case bof_index:
        _bof = v;
        break;
    case gauloises_index:
        // (64^G - 1) / 63: silent at 0, full level at 1, about -19 dB at 0.5.
        _cat_level = static_cast<float>((std::exp(value * 6.0 * std::log(2.0)) - 1.0) / (std::exp(6.0 * std::log(2.0)) - 1.0));
        break;
    case nuke_index:
        _beret_ctrl.set_nuke(std::floor(value + 0.5) == 1.0);
        break;
    case oignons_index:
        _cat_army.set_oignons(v);
        break;
    default:
        _beret_ctrl.set_vin_rouge(v);
        break;
    }
}

void ZarquetteDsp::read_input(const float* const* inputs, int offset, int n)
{
    const float* left = inputs[0] + offset;
    if (_stereo_in)
    {
        const float* right = inputs[1] + offset;
        for (int i = 0; i < n; ++i)
        {
            _beret_in[static_cast<std::size_t>(i)] = finite_or_zero((left[i] + right[i]) * 0.5f);
        }
    }
    else
    {
        for (int i = 0; i < n; ++i)
        {
            _beret_in[static_cast<std::size_t>(i)] = finite_or_zero(left[i]);
        }
    }
}

bool ZarquetteDsp::is_lunch_break() const
{
    double t = sys::get_clock_s() - _clock_origin;
    t = std::fmod(t, seconds_per_day);
    if (t < 0.0)
    {
        t += seconds_per_day;
    }
    return t < lunch_break_s;
}

void ZarquetteDsp::render_sub_block(int n)
{
    const auto count = static_cast<std::size_t>(n);
    if (is_lunch_break())
    {
        std::fill_n(_cat_l.begin(), count, 0.0f);
        std::fill_n(_cat_r.begin(), count, 0.0f);
        return;
    }
    _cat_army.render(n);
    const float send = _bof * _cat_level;
    for (std::size_t i = 0; i < count; ++i)
    {
        _beret_in[i] += (_cat_l[i] + _cat_r[i]) * send;
    }
    // Keeps the loop engine's filters out of denormal territory on silence.
    _beret_in[0] += 1e-20f * 7.0f;
    _beret_in[count / 2] -= 1e-20f * 3.0f;
    _beret_ctrl.render(n);
    const float direct = (1.0f - _bof) * _cat_level;
    for (std::size_t i = 0; i < count; ++i)
    {
        _cat_l[i] = _cat_l[i] * direct + _beret_out[i];
        _cat_r[i] = _cat_r[i] * direct + _beret_out[i];
    }
}

void ZarquetteDsp::write_output(float* const* outputs, int offset, int n) const
{
    float* left = outputs[0] + offset;
    if (_stereo_out)
    {
        float* right = outputs[1] + offset;
        std::copy_n(_cat_l.begin(), n, left);
        std::copy_n(_cat_r.begin(), n, right);
        return;
    }
    for (int i = 0; i < n; ++i)
    {
        left[i] = (_cat_l[static_cast<std::size_t>(i)] + _cat_r[static_cast<std::size_t>(i)]) * 0.5f;
    }
}

}  // namespace zarquette
