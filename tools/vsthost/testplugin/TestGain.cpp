#include "TestGain.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <strings.h>

namespace testgain
{

namespace
{

using lumo::vst2::PluginOp;

constexpr double min_db = -60.0;
constexpr double max_db = 12.0;
constexpr std::int32_t bank_magic = lumo::vst2::four_cc('T', 'G', 'b', 'k');
constexpr std::int32_t preset_magic = lumo::vst2::four_cc('T', 'G', 'p', 'r');
// A program in a chunk: its name, then the values as big-endian floats.
constexpr std::size_t program_bytes = TestGain::name_size + 4 * TestGain::param_count;
constexpr std::size_t bank_header_bytes = 12;

const char* const param_names[TestGain::param_count] = {"Gain", "Phase"};
const char* const param_labels[TestGain::param_count] = {"dB", ""};

void copy_text(char* out, const char* text, std::size_t capacity)
{
    std::snprintf(out, capacity, "%s", text);
}

void put_u32(std::vector<std::uint8_t>& out, std::uint32_t v)
{
    for (int shift = 24; shift >= 0; shift -= 8)
    {
        out.push_back(static_cast<std::uint8_t>(v >> shift));
    }
}

std::uint32_t get_u32(const std::uint8_t* p)
{
    return (std::uint32_t{p[0]} << 24) | (std::uint32_t{p[1]} << 16) | (std::uint32_t{p[2]} << 8) | p[3];
}

std::intptr_t answer_can_do(const char* text)
{
    if (text == nullptr)
    {
        return 0;
    }
    for (const char* yes : {"receiveVstTimeInfo", "receiveVstEvents", "receiveVstMidiEvent", "sendVstEvents",
                            "sendVstMidiEvent"})
    {
        if (std::strcmp(text, yes) == 0)
        {
            return 1;
        }
    }
    return 0;
}

float to_norm_db(double db)
{
    return static_cast<float>((std::clamp(db, min_db, max_db) - min_db) / (max_db - min_db));
}

}  // namespace

TestGain::TestGain(lumo::vst2::HostCallback host) : _host(host)
{
    _effect.magic = lumo::vst2::effect_magic;
    _effect.dispatcher = &dispatcher_proc;
    _effect.process = &process_proc;
    _effect.set_parameter = &set_parameter_proc;
    _effect.get_parameter = &get_parameter_proc;
    _effect.num_programs = program_count;
    _effect.num_params = param_count;
    _effect.num_inputs = 2;
    _effect.num_outputs = 2;
    _effect.flags = lumo::vst2::effect_flags::can_replacing;
#ifndef TESTGAIN_NO_CHUNKS
    _effect.flags |= lumo::vst2::effect_flags::program_chunks;
#endif
    if (TestGainEditor::is_available())
    {
        _effect.flags |= lumo::vst2::effect_flags::has_editor;
    }
    _effect.io_ratio = 1.0f;
    _effect.object = this;
    _effect.unique_id = lumo::vst2::four_cc('V', 't', 'G', 'n');
    _effect.version = 100;
    _effect.process_replacing = &process_replacing_proc;
    const char* const names[program_count] = {"Unity", "Quiet", "Inverted"};
    const float gains[program_count] = {to_norm_db(0.0), to_norm_db(-12.0), to_norm_db(0.0)};
    for (int i = 0; i < program_count; ++i)
    {
        Program& p = _programs[static_cast<std::size_t>(i)];
        copy_text(p.name.data(), names[i], name_size);
        p.values[0] = gains[i];
        p.values[1] = i == 2 ? 1.0f : 0.0f;
    }
}

TestGain* TestGain::use_self(lumo::vst2::AEffect* effect)
{
    return static_cast<TestGain*>(effect->object);
}

std::intptr_t TestGain::dispatcher_proc(lumo::vst2::AEffect* effect, std::int32_t opcode, std::int32_t index,
                                        std::intptr_t value, void* ptr, float opt)
{
    TestGain* self = use_self(effect);
    const std::intptr_t answer = self->dispatch(static_cast<PluginOp>(opcode), index, value, ptr, opt);
    if (opcode == static_cast<std::int32_t>(PluginOp::close))
    {
        delete self;
    }
    return answer;
}

std::intptr_t TestGain::dispatch(PluginOp op, std::int32_t index, std::intptr_t value, void* ptr, float opt)
{
    switch (op)
    {
    case PluginOp::set_program:
        if (value >= 0 && value < program_count)
        {
            _current = static_cast<int>(value);
        }
        return 0;
    case PluginOp::get_program:
        return _current.load();
    case PluginOp::set_program_name:
        _crash.at(TestGainCrash::Place::name);
        copy_text(use_current().name.data(), static_cast<const char*>(ptr), name_size);
        return 0;
    case PluginOp::set_sample_rate:
        _crash.at(opt > 100000.0f ? TestGainCrash::Place::rate : TestGainCrash::Place::none);
        _sample_rate = opt;
        return 0;
    case PluginOp::get_chunk:
        _crash.at(TestGainCrash::Place::chunk);
        return get_chunk(index != 0, static_cast<void**>(ptr));
    case PluginOp::set_chunk:
        return set_chunk(index != 0, static_cast<const std::uint8_t*>(ptr), value);
    case PluginOp::can_be_automated:
        return index >= 0 && index < param_count ? 1 : 0;
    case PluginOp::string_to_parameter:
        _crash.at(TestGainCrash::Place::text);
        return parse_text(index, static_cast<const char*>(ptr)) ? 1 : 0;
    case PluginOp::get_program_name_indexed:
        if (index < 0 || index >= program_count)
        {
            return 0;
        }
        copy_text(static_cast<char*>(ptr), _programs[static_cast<std::size_t>(index)].name.data(), name_size);
        return 1;
    case PluginOp::get_input_properties:
    case PluginOp::get_output_properties:
        return get_pin(index, op == PluginOp::get_output_properties, static_cast<lumo::vst2::PinProperties*>(ptr))
                   ? 1
                   : 0;
    case PluginOp::get_plug_category:
        return static_cast<std::intptr_t>(lumo::vst2::PlugCategory::effect);
    case PluginOp::get_vendor_version:
        return 100;
    case PluginOp::can_do:
        return answer_can_do(static_cast<const char*>(ptr));
    case PluginOp::process_events:
        _crash.at(TestGainCrash::Place::midi);
        _midi.receive(static_cast<const lumo::vst2::Events*>(ptr));
        return 1;
    case PluginOp::mains_changed:
        if (value != 0)
        {
            _midi.reset();
            if (_host != nullptr)
            {
                _host(&_effect, static_cast<std::int32_t>(lumo::vst2::HostOp::want_midi), 0, 1, nullptr, 0.0f);
            }
        }
        return 0;
    case PluginOp::get_parameter_properties:
        return get_properties(index, static_cast<lumo::vst2::ParameterProperties*>(ptr)) ? 1 : 0;
    case PluginOp::get_vst_version:
        return 2400;
    case PluginOp::edit_get_rect:
    case PluginOp::edit_open:
    case PluginOp::edit_close:
    case PluginOp::edit_idle:
        return dispatch_editor(op, ptr);
    default:
        return dispatch_text(op, index, static_cast<char*>(ptr));
    }
}

std::intptr_t TestGain::dispatch_text(PluginOp op, std::int32_t index, char* text)
{
    const bool valid_param = index >= 0 && index < param_count;
    switch (op)
    {
    case PluginOp::get_program_name:
        copy_text(text, use_current().name.data(), name_size);
        return 0;
    case PluginOp::get_param_label:
        copy_text(text, valid_param ? param_labels[index] : "", lumo::vst2::max_param_str_len);
        return 0;
    case PluginOp::get_param_display:
        get_display(index, text);
        return 0;
    case PluginOp::get_param_name:
        copy_text(text, valid_param ? param_names[index] : "", lumo::vst2::max_param_str_len);
        return 0;
    case PluginOp::get_effect_name:
        copy_text(text, "TestGain", lumo::vst2::max_effect_name_len);
        return 1;
    case PluginOp::get_vendor_string:
        copy_text(text, "Velnor", lumo::vst2::max_vendor_str_len);
        return 1;
    case PluginOp::get_product_string:
        copy_text(text, "Velnor vsthost test gain", lumo::vst2::max_product_str_len);
        return 1;
    default:
        return 0;
    }
}

std::intptr_t TestGain::dispatch_editor(PluginOp op, void* ptr)
{
    if (!TestGainEditor::is_available())
    {
        return 0;
    }
    switch (op)
    {
    case PluginOp::edit_get_rect:
        if (ptr != nullptr)
        {
            *static_cast<lumo::vst2::ERect**>(ptr) = &_rect;
        }
        return 1;
    case PluginOp::edit_open:
        _crash.at(TestGainCrash::Place::editor);
        return _editor.open(ptr) ? 1 : 0;
    case PluginOp::edit_idle:
        _editor.idle();
        return 1;
    default:
        _editor.close();
        return 1;
    }
}

float TestGain::get_default(std::int32_t index)
{
    return index == 0 ? to_norm_db(0.0) : 0.0f;
}

void TestGain::edit_param(std::int32_t index, float value)
{
    set_param(index, value);
    call_host(lumo::vst2::HostOp::automate, index, 0, get_param(index));
}

bool TestGain::resize_editor(int width, int height)
{
    if (call_host(lumo::vst2::HostOp::size_window, width, height, 0.0f) == 0)
    {
        return false;
    }
    _rect.right = static_cast<std::int16_t>(width);
    _rect.bottom = static_cast<std::int16_t>(height);
    return true;
}

std::intptr_t TestGain::call_host(lumo::vst2::HostOp op, std::int32_t index, std::intptr_t value, float opt)
{
    return _host != nullptr ? _host(&_effect, static_cast<std::int32_t>(op), index, value, nullptr, opt) : 0;
}

float TestGain::get_param(std::int32_t index)
{
    if (index < 0 || index >= param_count)
    {
        return 0.0f;
    }
    return use_current().values[static_cast<std::size_t>(index)].load();
}

void TestGain::set_param(std::int32_t index, float value)
{
    // Automation may carry anything; keep the model inside [0, 1].
    if (index >= 0 && index < param_count && !std::isnan(value))
    {
        use_current().values[static_cast<std::size_t>(index)] = std::clamp(value, 0.0f, 1.0f);
    }
}

void TestGain::get_display(std::int32_t index, char* text)
{
    const float v = get_param(index);
    if (index == 0)
    {
        std::snprintf(text, lumo::vst2::max_param_str_len, "%.2f", min_db + (max_db - min_db) * v);
    }
    else
    {
        copy_text(text, index == 1 ? (v >= 0.5f ? "Inverted" : "Normal") : "", lumo::vst2::max_param_str_len + 1);
    }
}

bool TestGain::parse_text(std::int32_t index, const char* text)
{
    if (text == nullptr || index < 0 || index >= param_count)
    {
        return false;
    }
    if (index == 1)
    {
        const bool inverted = strcasecmp(text, "Inverted") == 0 || std::strcmp(text, "1") == 0;
        const bool normal = strcasecmp(text, "Normal") == 0 || std::strcmp(text, "0") == 0;
        if (inverted || normal)
        {
            set_param(1, inverted ? 1.0f : 0.0f);
        }
        return inverted || normal;
    }
    char* end = nullptr;
    const double db = std::strtod(text, &end);
    if (end == text || !std::isfinite(db))
    {
        return false;
    }
    set_param(0, to_norm_db(db));
    return true;
}

bool TestGain::get_pin(std::int32_t index, bool output, lumo::vst2::PinProperties* pin) const
{
    if (pin == nullptr || index < 0 || index > 1)
    {
        return false;
    }
    std::snprintf(pin->label, sizeof pin->label, "%s %s", output ? "Out" : "In", index == 0 ? "L" : "R");
    std::snprintf(pin->short_label, sizeof pin->short_label, "%s%s", output ? "O" : "I", index == 0 ? "L" : "R");
    pin->flags = lumo::vst2::pin_flags::is_active | lumo::vst2::pin_flags::is_stereo;
    pin->arrangement_type = lumo::vst2::speaker_arrangements::stereo;
    return true;
}

bool TestGain::get_properties(std::int32_t index, lumo::vst2::ParameterProperties* props) const
{
    if (props == nullptr || index < 0 || index >= param_count)
    {
        return false;
    }
    std::memset(props, 0, sizeof *props);
    copy_text(props->label, param_names[index], sizeof props->label);
    copy_text(props->short_label, param_names[index], sizeof props->short_label);
    props->flags = index == 0 ? lumo::vst2::parameter_flags::can_ramp : lumo::vst2::parameter_flags::is_switch;
    return true;
}

float TestGain::get_gain_factor()
{
    const double db = min_db + (max_db - min_db) * get_param(0);
    const float sign = get_param(1) >= 0.5f ? -1.0f : 1.0f;
    return sign * static_cast<float>(std::pow(10.0, db / 20.0));
}

void TestGain::ask_host_time()
{
    // Exercises the host's time callback the way tempo-synced effects do; the
    // gain itself does not follow the tempo.
    call_host(lumo::vst2::HostOp::get_time, 0,
              lumo::vst2::time_info_flags::tempo_valid | lumo::vst2::time_info_flags::ppq_pos_valid, 0.0f);
}

void TestGain::render(float** inputs, float** outputs, std::int32_t from, std::int32_t to, bool replacing)
{
    const float g = get_gain_factor() * _midi.get_expression();
    for (int c = 0; c < 2; ++c)
    {
        for (std::int32_t i = from; i < to; ++i)
        {
            outputs[c][i] = (replacing ? 0.0f : outputs[c][i]) + inputs[c][i] * g;
        }
    }
}

void TestGain::process_block(float** inputs, float** outputs, std::int32_t frames, bool replacing)
{
    // Each MIDI event takes effect at its own frame: the block is rendered
    // in pieces between the events.
    std::int32_t done = 0;
    for (std::size_t i = 0; i < _midi.get_count(); ++i)
    {
        const std::int32_t at = std::clamp(_midi.get_offset(i), done, frames);
        render(inputs, outputs, done, at, replacing);
        done = at;
        const float gain = _midi.apply(i);
        if (gain >= 0.0f)
        {
            set_param(0, gain);
        }
    }
    render(inputs, outputs, done, frames, replacing);
    _midi.finish_block(&_effect, _host, frames);
}

void TestGain::process_replacing_proc(lumo::vst2::AEffect* effect, float** inputs, float** outputs,
                                      std::int32_t frames)
{
    TestGain* self = use_self(effect);
    self->ask_host_time();
    self->process_block(inputs, outputs, frames, true);
}

void TestGain::process_proc(lumo::vst2::AEffect* effect, float** inputs, float** outputs, std::int32_t frames)
{
    use_self(effect)->process_block(inputs, outputs, frames, false);
}

void TestGain::set_parameter_proc(lumo::vst2::AEffect* effect, std::int32_t index, float value)
{
    use_self(effect)->set_param(index, value);
}

float TestGain::get_parameter_proc(lumo::vst2::AEffect* effect, std::int32_t index)
{
    return use_self(effect)->get_param(index);
}

void TestGain::write_program(const Program& program, std::vector<std::uint8_t>& out) const
{
    out.insert(out.end(), program.name.begin(), program.name.end());
    for (const auto& v : program.values)
    {
        std::uint32_t bits = 0;
        const float f = v.load();
        std::memcpy(&bits, &f, 4);
        put_u32(out, bits);
    }
}

void TestGain::read_program(const std::uint8_t* data, Program& program)
{
    std::memcpy(program.name.data(), data, name_size);
    program.name[name_size - 1] = 0;
    for (std::size_t i = 0; i < param_count; ++i)
    {
        const std::uint32_t bits = get_u32(data + name_size + 4 * i);
        float f = 0.0f;
        std::memcpy(&f, &bits, 4);
        program.values[i] = std::isnan(f) ? 0.0f : std::clamp(f, 0.0f, 1.0f);
    }
}

std::intptr_t TestGain::get_chunk(bool preset, void** data)
{
    if (data == nullptr)
    {
        return 0;
    }
    _chunk.clear();
    put_u32(_chunk, static_cast<std::uint32_t>(preset ? preset_magic : bank_magic));
    if (preset)
    {
        write_program(use_current(), _chunk);
    }
    else
    {
        put_u32(_chunk, program_count);
        put_u32(_chunk, static_cast<std::uint32_t>(_current.load()));
        for (const Program& p : _programs)
        {
            write_program(p, _chunk);
        }
    }
    *data = _chunk.data();
    return static_cast<std::intptr_t>(_chunk.size());
}

std::intptr_t TestGain::set_chunk(bool preset, const std::uint8_t* data, std::intptr_t size)
{
    // Chunks come from project files and may be anything: every size is checked
    // before a byte is read, and a chunk that does not fit changes nothing.
    if (data == nullptr || size < 4)
    {
        return 0;
    }
    const auto bytes = static_cast<std::size_t>(size);
    if (preset)
    {
        if (get_u32(data) != static_cast<std::uint32_t>(preset_magic) || bytes < 4 + program_bytes)
        {
            return 0;
        }
        read_program(data + 4, use_current());
        return 1;
    }
    if (get_u32(data) != static_cast<std::uint32_t>(bank_magic) || bytes < bank_header_bytes)
    {
        return 0;
    }
    const std::uint32_t count = get_u32(data + 4);
    const std::uint32_t current = get_u32(data + 8);
    if (count != program_count || current >= count || bytes < bank_header_bytes + count * program_bytes)
    {
        return 0;
    }
    for (std::size_t i = 0; i < program_count; ++i)
    {
        read_program(data + bank_header_bytes + i * program_bytes, _programs[i]);
    }
    _current = static_cast<int>(current);
    return 1;
}

}  // namespace testgain
