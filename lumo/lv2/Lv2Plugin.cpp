#include "lumo/lv2/Lv2Plugin.h"

#include "lumo/DspInterface.h"
#include "lumo/NormalizedParamInterface.h"
#include "lumo/SettingKeys.h"
#include "lumo/SettingMgr.h"
#include "lumo/lv2/HostDspLv2.h"
#include "lumo/lv2/Lv2AtomObject.h"
#include "lumo/lv2/Lv2BindingRecord.h"
#include "lumo/lv2/Lv2MidiDevSelComp.h"
#include "lumo/lv2/Lv2PluginRecipe.h"
#include "lumo/lv2/Lv2SequenceReader.h"
#include "lumo/lv2/Lv2SequenceWriter.h"
#include "lumo/midi/MidiDevSelDispatcher.h"
#include "lumo/midi/MidiMgr.h"
#include "lumo/midi/MidiReceiverInterface.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace lumo
{
namespace
{

// The audio side takes its frame count as an int; longer runs go in pieces.
constexpr std::uint32_t max_frames_per_call = 1u << 20;

std::unique_ptr<DspInterface> make_dsp(const Lv2PluginRecipe& recipe)
{
    std::unique_ptr<DspInterface> dsp(recipe.create_dsp != nullptr ? recipe.create_dsp() : nullptr);
    if (!dsp)
    {
        throw std::runtime_error("lumo::Lv2Plugin::Lv2Plugin() : No audio side.");
    }
    return dsp;
}

std::string make_store_path(std::string bundle_path, const char* below)
{
    while (!bundle_path.empty() && bundle_path.back() == '/')
    {
        bundle_path.pop_back();
    }
    return below != nullptr && *below != '\0' ? bundle_path + "/" + below : bundle_path;
}

}  // namespace

Lv2Plugin::Lv2Plugin(const Lv2PluginRecipe& recipe, double rate, const std::string& bundle_path,
                     const Features& features)
    : Lv2Plugin(make_dsp(recipe), recipe, rate, bundle_path, features)
{
}

Lv2Plugin::Lv2Plugin(std::unique_ptr<DspInterface> dsp, const Lv2PluginRecipe& recipe, double rate,
                     const std::string& bundle_path, const Features& features)
    : PluginCmdMixin(*dsp, nullptr),
      _dsp(std::move(dsp)),
      _layout(*_dsp),
      _learn_link(_urids, features.map),
      _state(_urids, _log, _dsp->get_setting_str(setting_key::plugin_name)),
      _store_path(make_store_path(bundle_path, recipe.store_path)),
      _audio_in(static_cast<std::size_t>(_layout.get_nbr_inputs()), nullptr),
      _audio_out(static_cast<std::size_t>(_layout.get_nbr_outputs()), nullptr),
      _control_in(static_cast<std::size_t>(_layout.get_nbr_controls()), nullptr),
      _in_view(_audio_in.size(), nullptr),
      _out_view(_audio_out.size(), nullptr),
      _last_control(_control_in.size(), std::numeric_limits<float>::quiet_NaN())
{
    _urids.map_all(features.map, recipe.uri);
    _log.set(features.log, _urids.log_error);
    _reorder.setup(*_dsp);
    if (auto* receiver = dynamic_cast<MidiReceiverInterface*>(_dsp.get()))
    {
        create_midi(receiver);
    }
    _dsp->set_host(new HostDspLv2(*this));
    _dsp->set_sample_freq(static_cast<float>(rate));

    _dsp->init();
    if (_midi_mgr)
    {
        init_midi();
    }
    SettingMgr& settings = _dsp->use_setting_mgr();
    if (const SettingAutoload* autoload = settings.use_autoload())
    {
        // A missing or foreign configuration leaves the plug-in at its defaults.
        autoload->autoload(settings);
    }
    _dsp->set_default_state();
    select_program();
    for (int i = 0; i < _dsp->get_nbr_param(); ++i)
    {
        _controls.emplace_back(_dsp->use_param(i));
    }
}

Lv2Plugin::~Lv2Plugin()
{
    _dsp->restore();
    if (_midi_mgr)
    {
        close_midi();
    }
    // The ports first: they point into the manager, which points to the audio side.
    _midi_dispatcher.reset();
    _midi_ports.reset();
    _midi_mgr.reset();
}

void Lv2Plugin::create_midi(MidiReceiverInterface* receiver)
{
    _midi_mgr = std::make_unique<MidiMgr>();
    _midi_ports = std::make_unique<Lv2MidiDevSelComp>();
    _midi_dispatcher = std::make_unique<MidiDevSelDispatcher>();
    _midi_mgr->set_dsp(_dsp.get());
    _midi_mgr->set_receiver(receiver);
    _midi_mgr->set_cmd(this);
    _midi_mgr->set_port_selector(_midi_dispatcher.get());
    _midi_dispatcher->set_midi_mgr(_midi_mgr.get());
    _midi_dispatcher->add_component(_midi_ports.get());
    _midi_ports->connect(_dsp.get(), _midi_mgr.get());
}

void Lv2Plugin::init_midi()
{
    // The host's input listens from the start; nothing is sent until a
    // configuration selects the output.
    _midi_dispatcher->initialise();
    _midi_dispatcher->list_inputs();
    _midi_dispatcher->list_outputs();
    _midi_dispatcher->select_defaults(true, false);
}

void Lv2Plugin::close_midi()
{
    _midi_dispatcher->select_input(MidiDevSelectorInterface::none);
    _midi_dispatcher->select_output(MidiDevSelectorInterface::none);
    _midi_dispatcher->deinitialise();
    _midi_mgr->reset();
}

// ---- Ports and blocks ------------------------------------------------------------

void Lv2Plugin::connect_port(std::uint32_t port, void* data)
{
    int n = 0;
    const auto i = [&n] { return static_cast<std::size_t>(n); };
    switch (_layout.get_kind(port, n))
    {
    case Lv2PortLayout::Kind::audio_in:
        _audio_in[i()] = static_cast<const float*>(data);
        break;
    case Lv2PortLayout::Kind::audio_out:
        _audio_out[i()] = static_cast<float*>(data);
        break;
    case Lv2PortLayout::Kind::control:
        _control_in[i()] = static_cast<const float*>(data);
        break;
    case Lv2PortLayout::Kind::atom_in:
        _atom_in = static_cast<const LV2_Atom_Sequence*>(data);
        break;
    case Lv2PortLayout::Kind::atom_out:
        _atom_out = static_cast<LV2_Atom_Sequence*>(data);
        break;
    case Lv2PortLayout::Kind::none:
        break;
    }
}

void Lv2Plugin::reset()
{
    _dsp->reset();
}

void Lv2Plugin::run(std::uint32_t frames)
{
    Lv2SequenceWriter notify(_atom_out, _urids.atom_sequence);
    if (_midi_ports)
    {
        _midi_ports->use_output().drain(notify, _urids.midi_event);
    }
    apply_controls();
    take_published_bank();
    if (_midi_mgr)
    {
        _midi_mgr->block_start();
    }
    // Each event takes effect at its own frame: the audio before it is
    // rendered first.
    std::uint32_t done = 0;
    Lv2SequenceReader events(_atom_in, frames, _urids);
    Lv2Event event;
    while (events.next(event))
    {
        render(done, event.frame);
        done = event.frame;
        take_event(event);
    }
    render(done, frames);
    if (_midi_mgr)
    {
        _midi_mgr->block_end();
        _learn_link.report(*_midi_mgr, notify);
    }
}

void Lv2Plugin::apply_controls()
{
    for (std::size_t i = 0; i < _control_in.size(); ++i)
    {
        if (_control_in[i] == nullptr)
        {
            continue;
        }
        const float value = *_control_in[i];
        if (value == _last_control[i] || std::isnan(value))
        {
            continue;
        }
        _last_control[i] = value;
        float norm = 0.0f;
        if (_controls[i].to_norm(value, norm))
        {
            set_param(static_cast<int>(i), norm, priority_level::host_automation);
        }
    }
}

void Lv2Plugin::take_event(const Lv2Event& event)
{
    if (event.type == _urids.midi_event)
    {
        if (_midi_ports && _midi_ports->use_input().is_active())
        {
            _midi_ports->use_input().process_event(event.body, event.size, static_cast<int>(event.frame));
        }
        return;
    }
    const Lv2AtomObject object(event, _urids);
    if (_midi_mgr && _learn_link.take(object, *_midi_mgr))
    {
        return;
    }
    double bpm = 0.0;
    if (object.is_a(_urids.time_position) && object.find_number(_urids.time_bpm, bpm))
    {
        follow_tempo(bpm);
    }
}

void Lv2Plugin::follow_tempo(double bpm)
{
    // A tempo that is not positive and finite is no tempo: the host's
    // position carries none, and the one in use stays.
    const auto tempo = static_cast<float>(bpm);
    if (!(tempo > 0.0f) || !std::isfinite(tempo))
    {
        return;
    }
    _host_tempo.store(bpm, std::memory_order_relaxed);
    _host_tempo_seen.store(true, std::memory_order_release);
    if (tempo != _last_tempo)
    {
        _dsp->set_tempo(tempo);
        _last_tempo = tempo;
    }
}

bool Lv2Plugin::can_render() const
{
    // The audio side needs the first channel of each direction; a second one
    // may be missing (it then works in mono).
    return !_audio_out.empty() && _audio_out[0] != nullptr && (_audio_in.empty() || _audio_in[0] != nullptr);
}

void Lv2Plugin::render(std::uint32_t from, std::uint32_t to)
{
    const bool live = can_render();
    for (std::uint32_t at = from; at < to;)
    {
        const std::uint32_t n = std::min(to - at, max_frames_per_call);
        for (std::size_t c = 0; c < _audio_out.size(); ++c)
        {
            _out_view[c] = _audio_out[c] != nullptr ? _audio_out[c] + at : nullptr;
            if (!live && _out_view[c] != nullptr)
            {
                std::fill_n(_out_view[c], n, 0.0f);
            }
        }
        if (live)
        {
            for (std::size_t c = 0; c < _audio_in.size(); ++c)
            {
                _in_view[c] = _audio_in[c] != nullptr ? _audio_in[c] + at : nullptr;
            }
            _dsp->process_replacing(_out_view.data(), _in_view.data(), static_cast<int>(n), 0);
        }
        at += n;
    }
}

bool Lv2Plugin::is_input_connected(int port, int channel) const
{
    const int c = _layout.get_input_channel(port, channel);
    return c >= 0 && _audio_in[static_cast<std::size_t>(c)] != nullptr;
}

bool Lv2Plugin::is_output_connected(int port, int channel) const
{
    const int c = _layout.get_output_channel(port, channel);
    return c >= 0 && _audio_out[static_cast<std::size_t>(c)] != nullptr;
}

// ---- Parameter commands ------------------------------------------------------------

void Lv2Plugin::report_param(int index, float value)
{
    if (_midi_mgr && _dsp->get_setting_num(setting_key::hide_parameters) == 0.0)
    {
        _midi_mgr->send_param(0, index, value);
    }
}

void Lv2Plugin::select_program()
{
    const ProgramSlot chosen = use_bank().use_program(0);
    set_program(chosen, priority_level::program, true, false);
}

// ---- State -------------------------------------------------------------------------

LV2_State_Status Lv2Plugin::save(LV2_State_Store_Function store, LV2_State_Handle handle)
{
    return _state.save(store, handle, get_held_program(), _midi_mgr.get());
}

LV2_State_Status Lv2Plugin::restore(LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle)
{
    Lv2State::Found found;
    const LV2_State_Status status = _state.restore(retrieve, handle, use_bank().use_program(0), found);
    if (status != LV2_STATE_SUCCESS)
    {
        return status;
    }
    // The bindings first, so that the program's echo goes to the restored controllers.
    if (found.bindings && _midi_mgr)
    {
        Lv2BindingRecord::apply(*found.bindings, *_midi_mgr);
        _learn_link.bindings_changed();
    }
    if (found.program)
    {
        use_bank_to_edit().set_program(0, *found.program);
        select_program();
    }
    return status;
}

}  // namespace lumo
