#include "lumo/vst2/Vst2Plugin.h"

#include "lumo/AudioPort.h"
#include "lumo/DspInterface.h"
#include "lumo/GuiInterface.h"
#include "lumo/HostDspInterface.h"
#include "lumo/NormalizedParamInterface.h"
#include "lumo/SettingKeys.h"
#include "lumo/SettingMgr.h"
#include "lumo/TextCompare.h"
#include "lumo/TextCopy.h"
#include "lumo/TimeInfoRequest.h"
#include "lumo/midi/MidiDevSelDispatcher.h"
#include "lumo/midi/MidiMgr.h"
#include "lumo/vst2/BkgInterface.h"
#include "lumo/vst2/StorePath.h"
#include "lumo/vst2/Vst2MidiDevSelComp.h"
#include "sys/ModulePath.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace lumo
{
namespace
{

// Capacities of the host's buffers: the classic hosts pass 24 and 32 bytes for
// short texts and the effect name, and a few write a zero just past the text,
// so one byte of each stays unused.
constexpr int short_text = 23;
constexpr int effect_name_text = 31;
constexpr int long_text = 64;
constexpr int pin_label_text = 64;
constexpr int short_label_text = 8;

int host_param_count(const DspInterface& dsp)
{
    return dsp.get_setting_num(setting_key::hide_parameters) != 0.0 ? 0 : dsp.get_nbr_param();
}

}  // namespace

Vst2Plugin::Vst2Plugin(vst2::HostCallback host, DspInterface* dsp, GuiInterface* gui,
                       MidiReceiverInterface* midi_receiver, const BankManager& bank, std::int32_t unique_id)
    : AudioEffectX(host, bank.get_nbr_programs(), host_param_count(*dsp)),
      PluginCmdMixin(*dsp, gui, bank),
      _dsp(dsp),
      _gui(gui),
      _midi_receiver(midi_receiver),
      _gestures(dsp->get_nbr_param())
{
    _bkg_task.reset(dsp->create_bkg_task());
    _reorder.setup(*dsp);
    int next_pin = 0;
    _input_pins = assign_pins(*dsp, true, next_pin);
    set_nbr_inputs(next_pin);
    next_pin = 0;
    _output_pins = assign_pins(*dsp, false, next_pin);
    set_nbr_outputs(next_pin);
    set_flag(vst2::effect_flags::can_replacing, true);
    set_flag(vst2::effect_flags::can_mono, dsp->get_setting_num(setting_key::can_mono) != 0.0);
    set_flag(vst2::effect_flags::is_synth,
             equals_ignoring_case(dsp->get_setting_str(setting_key::plugin_category).c_str(), "instrument"));
    set_unique_id(unique_id);
    if (midi_receiver != nullptr)
    {
        create_midi();
    }
}

Vst2Plugin::~Vst2Plugin()
{
    // The ports first: they point into the manager, which points to the audio side.
    _midi_dispatcher.reset();
    _vst2_midi_ports.reset();
    _midi_mgr.reset();
    if (_owns_sides)
    {
        delete _dsp;
        delete _gui;
    }
}

void Vst2Plugin::create_midi()
{
    _midi_mgr = std::make_unique<MidiMgr>();
    _vst2_midi_ports = std::make_unique<Vst2MidiDevSelComp>();
    _midi_dispatcher = std::make_unique<MidiDevSelDispatcher>();
    _midi_mgr->set_dsp(_dsp);
    _midi_mgr->set_receiver(_midi_receiver);
    _midi_mgr->set_cmd(this);
    _midi_mgr->set_port_selector(_midi_dispatcher.get());
    _midi_dispatcher->set_midi_mgr(_midi_mgr.get());
    _midi_dispatcher->add_component(_vst2_midi_ports.get());
    _vst2_midi_ports->connect_adapter(this, _midi_mgr.get());
}

void Vst2Plugin::init_midi()
{
    // The host's event input is always there and listens from the start;
    // nothing is sent until a configuration selects an output.
    _midi_dispatcher->initialise();
    _midi_dispatcher->list_inputs();
    _midi_dispatcher->list_outputs();
    _midi_dispatcher->select_defaults(true, false);
}

void Vst2Plugin::close_midi()
{
    _midi_dispatcher->select_input(MidiDevSelectorInterface::none);
    _midi_dispatcher->select_output(MidiDevSelectorInterface::none);
    _midi_dispatcher->deinitialise();
    _midi_mgr->reset();
}

Vst2Plugin::PinMap Vst2Plugin::assign_pins(const DspInterface& dsp, bool inputs, int& next_pin)
{
    const int ports = inputs ? dsp.get_nbr_input_ports() : dsp.get_nbr_output_ports();
    PinMap map;
    for (int p = 0; p < ports; ++p)
    {
        const AudioPort& port = inputs ? dsp.use_input_port(p) : dsp.use_output_port(p);
        std::array<int, 2> pins{-1, -1};
        for (int c = 0; c < port.get_nbr_channels() && c < 2; ++c)
        {
            pins[static_cast<std::size_t>(c)] = next_pin++;
        }
        map.push_back(pins);
    }
    return map;
}

void Vst2Plugin::init_step()
{
    _dsp->init();
    const bool chunks = _dsp->get_setting_num(setting_key::force_chunk_storage) != 0.0
                     || !use_bank().use_program(0).use_extra_data().empty();
    set_flag(vst2::effect_flags::program_chunks, chunks);
    if (_midi_mgr)
    {
        init_midi();
    }
    if (_gui != nullptr)
    {
        _gui->init();
    }
    SettingMgr& settings = _dsp->use_setting_mgr();
    if (const SettingAutoload* autoload = settings.use_autoload())
    {
        // A missing or foreign configuration leaves the plug-in at its defaults.
        autoload->autoload(settings);
    }
}

void Vst2Plugin::default_step()
{
    _dsp->set_default_state();
    if (_gui != nullptr)
    {
        _gui->set_default_state();
    }
}

void Vst2Plugin::close_step()
{
    _dsp->restore();
    if (_midi_mgr)
    {
        close_midi();
    }
    if (_gui != nullptr)
    {
        _gui->restore();
    }
}

// ---- Parameter commands -------------------------------------------------------

void Vst2Plugin::report_param(int index, float value)
{
    if (_dsp->get_setting_num(setting_key::hide_parameters) != 0.0 || _dsp->get_nbr_param() == 0)
    {
        return;
    }
    if (_midi_mgr)
    {
        _midi_mgr->send_param(0, index, value);
    }
    const int host_index = _reorder.get_host_index(index);
    _gestures.open(index, [&] { call_host(vst2::HostOp::begin_edit, host_index); });
    call_host(vst2::HostOp::automate, host_index, 0, nullptr, value);
    if (_gui == nullptr)
    {
        call_host(vst2::HostOp::update_display);
    }
}

void Vst2Plugin::report_program_value(int index, float value)
{
    call_host(vst2::HostOp::automate, _reorder.get_host_index(index), 0, nullptr, value);
}

void Vst2Plugin::end_program_change()
{
    call_host(vst2::HostOp::update_display);
}

void Vst2Plugin::close_free_gestures()
{
    _gestures.close_all([this](int i) { return is_free(i, priority_level::gesture_end_test); },
                        [this](int i) { call_host(vst2::HostOp::end_edit, _reorder.get_host_index(i)); });
}

std::string Vst2Plugin::get_store_path()
{
    const auto* dir = reinterpret_cast<const char*>(call_host(vst2::HostOp::get_directory));
    return make_store_path(dir != nullptr ? dir : "", sys::get_module_file_name(), _registry_path);
}

int Vst2Plugin::get_input_pin(int port, int channel) const
{
    if (port < 0 || port >= static_cast<int>(_input_pins.size()) || channel < 0 || channel > 1)
    {
        return -1;
    }
    return _input_pins[static_cast<std::size_t>(port)][static_cast<std::size_t>(channel)];
}

int Vst2Plugin::get_output_pin(int port, int channel) const
{
    if (port < 0 || port >= static_cast<int>(_output_pins.size()) || channel < 0 || channel > 1)
    {
        return -1;
    }
    return _output_pins[static_cast<std::size_t>(port)][static_cast<std::size_t>(channel)];
}

// ---- Host parameter access -----------------------------------------------------

NormalizedParamInterface& Vst2Plugin::use_host_param(int host_index)
{
    return _dsp->use_param(_reorder.get_internal_index(host_index));
}

void Vst2Plugin::set_parameter(int index, float value)
{
    // Hosts do send NaN and values outside [0, 1]; neither may reach the engines.
    if (!is_host_index(index) || std::isnan(value))
    {
        return;
    }
    set_param(_reorder.get_internal_index(index), std::clamp(value, 0.0f, 1.0f), priority_level::host_automation);
}

float Vst2Plugin::get_parameter(int index)
{
    return is_host_index(index) ? use_host_param(index).get_norm() : 0.0f;
}

void Vst2Plugin::get_parameter_label(int index, char* text)
{
    if (is_host_index(index) && text != nullptr)
    {
        use_host_param(index).get_unit(text, short_text);
    }
}

void Vst2Plugin::get_parameter_display(int index, char* text)
{
    if (is_host_index(index) && text != nullptr)
    {
        NormalizedParamInterface& p = use_host_param(index);
        p.get_display(text, short_text, p.get_nat_value());
    }
}

void Vst2Plugin::get_parameter_name(int index, char* text)
{
    if (is_host_index(index) && text != nullptr)
    {
        use_host_param(index).get_name(text, short_text);
    }
}

bool Vst2Plugin::can_parameter_be_automated(int index)
{
    if (index < 0)
    {
        return false;
    }
    if (index >= get_nbr_params())
    {
        return true;
    }
    return _automation_limit.allows(use_host_param(index).automation_priority);
}

bool Vst2Plugin::string_to_parameter(int index, const char* text)
{
    if (text == nullptr)
    {
        return true;
    }
    if (!is_host_index(index))
    {
        return false;
    }
    NormalizedParamInterface& p = use_host_param(index);
    bool ok = false;
    const double x = p.parse_display(text, ok);
    if (ok)
    {
        set_parameter(index, static_cast<float>(p.nat_to_norm(x)));
    }
    return ok;
}

bool Vst2Plugin::get_parameter_properties(int index, vst2::ParameterProperties* props)
{
    if (!is_host_index(index) || props == nullptr)
    {
        return false;
    }
    NormalizedParamInterface& p = use_host_param(index);
    std::memset(props, 0, sizeof(*props));
    p.get_name(props->label, long_text);
    copy_text(props->short_label, short_label_text, props->label);
    if (p.get_type() == 1)
    {
        double lo = std::floor(p.norm_to_nat(0.0f) + 0.5);
        double hi = std::floor(p.norm_to_nat(1.0f) + 0.5);
        if (lo > hi)
        {
            std::swap(lo, hi);
        }
        if (hi - lo == 1.0)
        {
            props->flags = vst2::parameter_flags::is_switch;
        }
        else
        {
            props->min_integer = static_cast<std::int32_t>(lo);
            props->max_integer = static_cast<std::int32_t>(hi);
            props->flags = vst2::parameter_flags::uses_integer_min_max;
        }
    }
    else
    {
        props->flags = vst2::parameter_flags::can_ramp;
    }
    return true;
}

// ---- Programs and chunks ---------------------------------------------------------

int Vst2Plugin::get_current_index() const
{
    return std::clamp(get_program_index(), 0, use_bank().get_nbr_programs() - 1);
}

void Vst2Plugin::refresh_current_program()
{
    set_current_program(get_held_program());
}

void Vst2Plugin::set_program_index(int program)
{
    if (program < 0 || program >= use_bank().get_nbr_programs())
    {
        return;
    }
    // The program being left keeps the values it was given since it was chosen.
    keep_program_values();
    select_program(program);
}

void Vst2Plugin::select_program(int program)
{
    if (program < 0 || program >= use_bank().get_nbr_programs())
    {
        return;
    }
    AudioEffectX::set_program_index(program);
    const ProgramSlot chosen = use_bank().use_program(program);
    set_program(chosen, priority_level::program, true, false);
}

void Vst2Plugin::set_program_name(const char* name)
{
    use_bank_to_edit().set_program_name(get_current_index(), name);
    _dsp->set_program_name(use_bank().use_program(get_current_index()).get_name());
}

void Vst2Plugin::get_program_name(char* name)
{
    if (name != nullptr)
    {
        copy_text(name, short_text, use_bank().use_program(get_current_index()).get_name().c_str());
    }
}

bool Vst2Plugin::get_program_name_indexed(int /*category*/, int index, char* text)
{
    if (index < 0 || index >= use_bank().get_nbr_programs() || text == nullptr)
    {
        return false;
    }
    copy_text(text, long_text, use_bank().use_program(index).get_name().c_str());
    return true;
}

bool Vst2Plugin::copy_program(int destination)
{
    if (destination < 0 || destination >= use_bank().get_nbr_programs())
    {
        return false;
    }
    keep_program_values();
    return use_bank_to_edit().set_program(destination, use_bank().use_program(get_current_index())) == 0;
}

int Vst2Plugin::get_chunk(void** data, bool is_preset)
{
    if (data == nullptr)
    {
        return 0;
    }
    *data = nullptr;
    refresh_current_program();
    const basic::SerializableInterface* source = &use_bank();
    if (is_preset)
    {
        source = &use_bank().use_program(get_current_index());
    }
    else if (const basic::SerializableInterface* serializer = _dsp->use_chunk_serializer())
    {
        source = serializer;
    }
    const std::size_t size = source->get_size();
    if (size == 0 || size > static_cast<std::size_t>(INT32_MAX))
    {
        return 0;
    }
    _chunk.resize(size);
    if (source->write(_chunk.data(), size) != 0)
    {
        return 0;
    }
    *data = _chunk.data();
    return static_cast<int>(size);
}

int Vst2Plugin::set_chunk(void* data, int byte_size, bool is_preset)
{
    if (data == nullptr || byte_size <= 0)
    {
        return 0;
    }
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    const auto count = static_cast<std::size_t>(byte_size);
    if (is_preset)
    {
        ProgramSlot program = use_bank().use_program(get_current_index());
        if (program.read(bytes, count) != 0 || use_bank_to_edit().set_program(get_current_index(), program) != 0)
        {
            return 0;
        }
    }
    else if (basic::SerializableInterface* serializer = _dsp->use_chunk_serializer())
    {
        if (serializer->read(bytes, count) != 0)
        {
            return 0;
        }
        refresh_current_program();
    }
    else if (use_bank_to_edit().read(bytes, count) != 0)
    {
        return 0;
    }
    // A bank with fewer programs than the current number: back to its last one.
    select_program(get_current_index());
    return 1;
}

// ---- Audio -------------------------------------------------------------------------

void Vst2Plugin::set_sample_rate(float rate)
{
    if (!(rate > 0.0f) || !std::isfinite(rate))
    {
        return;
    }
    AudioEffectX::set_sample_rate(rate);
    _dsp->set_sample_freq(rate);
    _dsp->reset();
}

void Vst2Plugin::suspend()
{
    std::vector<std::uint8_t>().swap(_chunk);
    _dsp->reset();
}

void Vst2Plugin::resume()
{
    call_host(vst2::HostOp::need_idle);
    std::vector<std::uint8_t>().swap(_chunk);
    const auto budget = static_cast<int>(call_host(vst2::HostOp::get_num_automatable_parameters));
    _automation_limit.update(budget, get_automation_priorities());
    _dsp->reset();
    if (_midi_receiver != nullptr)
    {
        call_host(vst2::HostOp::want_midi, 0, 1);
    }
}

std::vector<int> Vst2Plugin::get_automation_priorities()
{
    std::vector<int> priorities;
    for (int i = 0; i < _dsp->get_nbr_param(); ++i)
    {
        priorities.push_back(_dsp->use_param(i).automation_priority);
    }
    return priorities;
}

void Vst2Plugin::begin_block()
{
    take_published_bank();
    TimeInfoRequest request;
    request.want_tempo = true;
    if (HostDspInterface* host = _dsp->use_host())
    {
        host->get_time_info(request);
    }
    if (request.failed || !request.want_tempo)
    {
        return;
    }
    const auto tempo = static_cast<float>(request.tempo);
    if (tempo != _last_tempo && std::isfinite(tempo))
    {
        _dsp->set_tempo(tempo);
        if (_gui != nullptr)
        {
            post_tempo(tempo);
        }
        _last_tempo = tempo;
    }
}

void Vst2Plugin::post_tempo(float /*bpm*/)
{
}

void Vst2Plugin::render(float** inputs, float** outputs, int frames, bool adding)
{
    if (outputs == nullptr || frames <= 0)
    {
        return;
    }
    // The audio side needs the first channel of each direction (a second one
    // may be missing: it then works in mono). Without them there is nothing
    // to render, and a replacing call leaves silence in every output it can
    // reach rather than whatever the host's buffer held.
    const bool has_inputs = get_nbr_inputs() == 0 || (inputs != nullptr && inputs[0] != nullptr);
    if (!has_inputs || outputs[0] == nullptr)
    {
        if (!adding)
        {
            write_silence(outputs, frames);
        }
        return;
    }
    begin_block();
    if (_midi_mgr)
    {
        _midi_mgr->block_start();
    }
    if (adding)
    {
        _dsp->process_adding(outputs, inputs, frames, 0);
    }
    else
    {
        _dsp->process_replacing(outputs, inputs, frames, 0);
    }
    if (_midi_mgr)
    {
        _midi_mgr->block_end();
    }
}

void Vst2Plugin::write_silence(float** outputs, int frames) const
{
    for (int c = 0; c < get_nbr_outputs(); ++c)
    {
        if (outputs[c] != nullptr)
        {
            std::fill_n(outputs[c], frames, 0.0f);
        }
    }
}

void Vst2Plugin::process(float** inputs, float** outputs, int frames)
{
    render(inputs, outputs, frames, true);
}

void Vst2Plugin::process_replacing(float** inputs, float** outputs, int frames)
{
    render(inputs, outputs, frames, false);
}

int Vst2Plugin::process_events(vst2::Events* events)
{
    // Without a MIDI manager the events have nowhere to go; they are accepted
    // all the same, as hosts expect.
    Vst2MidiIn* in = _vst2_midi_ports ? &_vst2_midi_ports->use_input() : nullptr;
    // No host sends that many MIDI events for one block (the wire carries about
    // a thousand a second); a larger count is garbage and its array cannot be trusted.
    constexpr int max_events = 10000;
    if (!_midi_mgr || in == nullptr || !in->is_active() || events == nullptr || events->num_events <= 0
        || events->num_events > max_events)
    {
        return 1;
    }
    // Events are due within the coming block; a host that says otherwise gets
    // them at the nearest frame of it.
    const int last_frame = std::max(get_block_size() - 1, 0);
    // The host's array is longer than the record declares.
    vst2::Event* const* list = events->events;
    for (int i = 0; i < events->num_events; ++i)
    {
        const vst2::Event* event = list[i];
        if (event != nullptr && event->type == vst2::event_types::midi)
        {
            const auto& midi = *reinterpret_cast<const vst2::MidiEvent*>(event);
            in->process_event(midi, std::clamp(midi.delta_frames, 0, last_frame));
        }
    }
    return 1;
}

void Vst2Plugin::send_vst_events_to_host(vst2::Events* events)
{
    call_host(vst2::HostOp::process_events, 0, 0, events);
}

// ---- Identity ----------------------------------------------------------------------

bool Vst2Plugin::get_input_properties(int pin, vst2::PinProperties* props)
{
    return get_pin_properties(true, pin, props);
}

bool Vst2Plugin::get_output_properties(int pin, vst2::PinProperties* props)
{
    return get_pin_properties(false, pin, props);
}

bool Vst2Plugin::get_pin_properties(bool inputs, int pin, vst2::PinProperties* props) const
{
    if (props == nullptr)
    {
        return false;
    }
    const PinMap& map = inputs ? _input_pins : _output_pins;
    for (std::size_t p = 0; p < map.size(); ++p)
    {
        const AudioPort& port = inputs ? _dsp->use_input_port(static_cast<int>(p))
                                       : _dsp->use_output_port(static_cast<int>(p));
        for (int c = 0; c < 2; ++c)
        {
            if (map[p][static_cast<std::size_t>(c)] == pin && pin >= 0)
            {
                copy_text(props->label, pin_label_text - 1, port.get_channel_name(c).c_str());
                props->flags = vst2::pin_flags::is_active;
                if (port.get_nbr_channels() == 2)
                {
                    props->flags |= vst2::pin_flags::is_stereo;
                }
                return true;
            }
        }
    }
    return false;
}

int Vst2Plugin::get_plug_category()
{
    const std::string category = _dsp->get_setting_str(setting_key::plugin_category);
    if (category.empty() || equals_ignoring_case(category.c_str(), "effect") || equals_ignoring_case(category.c_str(), "hybrid"))
    {
        return static_cast<int>(vst2::PlugCategory::effect);
    }
    if (equals_ignoring_case(category.c_str(), "instrument"))
    {
        return static_cast<int>(vst2::PlugCategory::synth);
    }
    if (equals_ignoring_case(category.c_str(), "analyser"))
    {
        return static_cast<int>(vst2::PlugCategory::analysis);
    }
    return static_cast<int>(vst2::PlugCategory::unknown);
}

bool Vst2Plugin::get_effect_name(char* text)
{
    if (text == nullptr)
    {
        return false;
    }
    std::string name = _dsp->get_setting_str(setting_key::plugin_name_display);
    if (name.empty())
    {
        name = _dsp->get_setting_str(setting_key::plugin_name);
    }
    copy_text(text, effect_name_text, name.c_str());
    return true;
}

bool Vst2Plugin::get_vendor_string(char* text)
{
    if (text == nullptr)
    {
        return false;
    }
    copy_text(text, long_text, "Velnor");
    return true;
}

bool Vst2Plugin::get_product_string(char* text)
{
    if (text == nullptr)
    {
        return false;
    }
    char product[256];
    std::snprintf(product, sizeof(product), "Velnor %s %.2lf",
                  _dsp->get_setting_str(setting_key::plugin_name).c_str(),
                  _dsp->get_setting_num(setting_key::plugin_version));
    copy_text(text, long_text, product);
    return true;
}

int Vst2Plugin::get_vendor_version()
{
    // Three decimal digits of the version become three hexadecimal digits: 1.12 is 0x112.
    double x = _dsp->get_setting_num(setting_key::plugin_version);
    const double a = std::floor(x);
    x = (x - a) * 10.0;
    const double b = std::floor(x);
    x = (x - b) * 10.0;
    const double c = std::floor(x);
    return static_cast<int>((a * 16.0 + b) * 16.0 + c);
}

int Vst2Plugin::can_do(const char* text)
{
    static const char* const midi_texts[] = {"sendVstMidiEvent", "sendVstEvents", "receiveVstMidiEvent",
                                             "receiveVstEvents"};
    for (const char* m : midi_texts)
    {
        if (std::strcmp(text, m) == 0)
        {
            return use_midi_mgr() != nullptr ? 1 : -1;
        }
    }
    return std::strcmp(text, "receiveVstTimeInfo") == 0 ? 1 : 0;
}

}  // namespace lumo
