#include "HostedPlugin.h"

#include "PluginLibrary.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace vsthost
{

namespace
{

using lumo::vst2::HostOp;
using lumo::vst2::PluginOp;

// The instance whose entry point is running on this thread: plug-ins call the
// host before the host knows their record.
thread_local HostedPlugin* t_loading = nullptr;
// Set while this thread is inside a processing call, for the process level.
thread_local bool t_processing = false;

// Plug-ins are known to write well past the interface's text sizes.
constexpr std::size_t text_buffer_size = 1024;

bool equal_ignoring_case(const std::string& a, const std::string& b)
{
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
           });
}

std::intptr_t answer_can_do(const char* text)
{
    if (text == nullptr)
    {
        return 0;
    }
    for (const char* yes : {"sendVstTimeInfo", "sizeWindow", "startStopProcess", "supplyIdle"})
    {
        if (std::strcmp(text, yes) == 0)
        {
            return 1;
        }
    }
    return -1;
}

std::intptr_t copy_host_text(void* ptr, const char* text)
{
    if (ptr == nullptr)
    {
        return 0;
    }
    std::strncpy(static_cast<char*>(ptr), text, lumo::vst2::max_vendor_str_len - 1);
    static_cast<char*>(ptr)[lumo::vst2::max_vendor_str_len - 1] = 0;
    return 1;
}

}  // namespace

HostedPlugin::HostedPlugin(const PluginLibrary& library) : _directory(library.get_directory())
{
    t_loading = this;
    lumo::vst2::AEffect* effect = library.get_entry()(&host_callback);
    t_loading = nullptr;
    if (effect == nullptr)
    {
        throw std::runtime_error(library.get_path() + ": the entry point gave no plug-in");
    }
    if (effect->magic != lumo::vst2::effect_magic || effect->dispatcher == nullptr)
    {
        throw std::runtime_error(library.get_path() + ": the entry point gave no valid plug-in record");
    }
    _effect = effect;
    _effect->user = this;
    dispatch(PluginOp::open);
}

HostedPlugin::~HostedPlugin()
{
    close_editor();
    suspend();
    // The plug-in deletes itself here; the record is gone afterwards.
    dispatch(PluginOp::close);
}

std::intptr_t HostedPlugin::dispatch(PluginOp op, std::int32_t index, std::intptr_t value, void* ptr, float opt)
{
    return _effect->dispatcher(_effect, static_cast<std::int32_t>(op), index, value, ptr, opt);
}

std::string HostedPlugin::get_text(PluginOp op, std::int32_t index)
{
    std::array<char, text_buffer_size> text{};
    dispatch(op, index, 0, text.data());
    text.back() = 0;
    return text.data();
}

std::intptr_t HostedPlugin::can_do(const std::string& text)
{
    std::string copy = text;
    return dispatch(PluginOp::can_do, 0, 0, copy.data());
}

float HostedPlugin::get_param(int index)
{
    return _effect->get_parameter != nullptr ? _effect->get_parameter(_effect, index) : 0.0f;
}

void HostedPlugin::set_param(int index, float value)
{
    if (_effect->set_parameter != nullptr)
    {
        _effect->set_parameter(_effect, index, value);
    }
}

bool HostedPlugin::get_param_properties(int index, lumo::vst2::ParameterProperties& props)
{
    props = lumo::vst2::ParameterProperties{};
    const bool ok = dispatch(PluginOp::get_parameter_properties, index, 0, &props) != 0;
    props.label[sizeof props.label - 1] = 0;
    props.short_label[sizeof props.short_label - 1] = 0;
    props.category_label[sizeof props.category_label - 1] = 0;
    return ok;
}

bool HostedPlugin::set_param_text(int index, const std::string& text)
{
    std::string copy = text;
    return dispatch(PluginOp::string_to_parameter, index, 0, copy.data()) != 0;
}

int HostedPlugin::find_param(const std::string& name)
{
    for (int i = 0; i < get_num_params(); ++i)
    {
        if (equal_ignoring_case(get_param_name(i), name))
        {
            return i;
        }
    }
    char* end = nullptr;
    const long number = std::strtol(name.c_str(), &end, 10);
    if (!name.empty() && *end == 0 && number >= 0 && number < get_num_params())
    {
        return static_cast<int>(number);
    }
    return -1;
}

int HostedPlugin::get_program()
{
    return static_cast<int>(dispatch(PluginOp::get_program));
}

void HostedPlugin::set_program(int index)
{
    dispatch(PluginOp::begin_set_program);
    dispatch(PluginOp::set_program, 0, index);
    dispatch(PluginOp::end_set_program);
}

void HostedPlugin::set_program_name(const std::string& name)
{
    std::array<char, text_buffer_size> text{};
    std::strncpy(text.data(), name.c_str(), lumo::vst2::max_program_name_len - 1);
    dispatch(PluginOp::set_program_name, 0, 0, text.data());
}

std::string HostedPlugin::get_program_name_indexed(int index)
{
    std::array<char, text_buffer_size> text{};
    if (dispatch(PluginOp::get_program_name_indexed, index, -1, text.data()) == 0)
    {
        return {};
    }
    text.back() = 0;
    return text.data();
}

std::vector<std::uint8_t> HostedPlugin::get_chunk(bool preset)
{
    void* data = nullptr;
    const std::intptr_t size = dispatch(PluginOp::get_chunk, preset ? 1 : 0, 0, &data);
    if (size <= 0 || data == nullptr)
    {
        return {};
    }
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    return std::vector<std::uint8_t>(bytes, bytes + size);
}

bool HostedPlugin::set_chunk(const std::vector<std::uint8_t>& chunk, bool preset)
{
    // The plug-in may keep the pointer only during the call, but some write
    // to it: hand over a copy.
    std::vector<std::uint8_t> copy = chunk;
    return dispatch(PluginOp::set_chunk, preset ? 1 : 0, static_cast<std::intptr_t>(copy.size()), copy.data()) != 0;
}

bool HostedPlugin::get_pin_properties(int pin, bool output, lumo::vst2::PinProperties& props)
{
    props = lumo::vst2::PinProperties{};
    const PluginOp op = output ? PluginOp::get_output_properties : PluginOp::get_input_properties;
    const bool ok = dispatch(op, pin, 0, &props) != 0;
    props.label[sizeof props.label - 1] = 0;
    props.short_label[sizeof props.short_label - 1] = 0;
    return ok;
}

void HostedPlugin::set_sample_rate(double rate)
{
    _sample_rate = rate;
    _transport.set_sample_rate(rate);
    dispatch(PluginOp::set_sample_rate, 0, 0, nullptr, static_cast<float>(rate));
}

void HostedPlugin::set_block_size(int frames)
{
    _block_size = frames;
    dispatch(PluginOp::set_block_size, 0, frames);
}

void HostedPlugin::resume()
{
    if (!_resumed)
    {
        dispatch(PluginOp::mains_changed, 0, 1);
        dispatch(PluginOp::start_process);
        _resumed = true;
    }
}

void HostedPlugin::suspend()
{
    if (_resumed)
    {
        dispatch(PluginOp::stop_process);
        dispatch(PluginOp::mains_changed, 0, 0);
        _resumed = false;
    }
}

void HostedPlugin::process(float** inputs, float** outputs, std::int32_t frames)
{
    t_processing = true;
    if (_effect->process_replacing != nullptr && has_flag(lumo::vst2::effect_flags::can_replacing))
    {
        _effect->process_replacing(_effect, inputs, outputs, frames);
    }
    else if (_effect->process != nullptr)
    {
        for (int c = 0; c < get_num_outputs(); ++c)
        {
            std::fill(outputs[c], outputs[c] + frames, 0.0f);
        }
        _effect->process(_effect, inputs, outputs, frames);
    }
    t_processing = false;
    _transport.advance(frames);
}

bool HostedPlugin::get_editor_rect(lumo::vst2::ERect& rect)
{
    lumo::vst2::ERect* answer = nullptr;
    dispatch(PluginOp::edit_get_rect, 0, 0, &answer);
    if (answer == nullptr)
    {
        return false;
    }
    rect = *answer;
    return true;
}

bool HostedPlugin::open_editor(void* parent)
{
    _editor_open = dispatch(PluginOp::edit_open, 0, 0, parent) != 0;
    return _editor_open;
}

void HostedPlugin::close_editor()
{
    if (_editor_open)
    {
        dispatch(PluginOp::edit_close);
        _editor_open = false;
    }
}

std::intptr_t HostedPlugin::host_callback(lumo::vst2::AEffect* effect, std::int32_t opcode, std::int32_t index,
                                          std::intptr_t value, void* ptr, float opt)
{
    const auto op = static_cast<HostOp>(opcode);
    HostedPlugin* self = t_loading;
    if (self == nullptr && effect != nullptr)
    {
        self = static_cast<HostedPlugin*>(effect->user);
    }
    if (op == HostOp::version)
    {
        return 2400;
    }
    return self != nullptr ? self->answer(op, index, value, ptr, opt) : 0;
}

std::intptr_t HostedPlugin::answer_editor(HostOp op, std::int32_t index, std::intptr_t value, float opt)
{
    EditorListenerInterface* const listener = _editor_listener.load();
    switch (op)
    {
    case HostOp::automate:
        ++_requests.automate;
        break;
    case HostOp::begin_edit:
        ++_requests.begin_edit;
        break;
    case HostOp::end_edit:
        ++_requests.end_edit;
        break;
    default:
        ++_requests.size_window;
        // Without a window to resize the request is granted: nothing shows it.
        return listener == nullptr || listener->size_window(index, static_cast<int>(value)) ? 1 : 0;
    }
    if (listener != nullptr)
    {
        listener->on_edit_request(op, index, opt);
    }
    return op == HostOp::automate ? 0 : 1;
}

std::intptr_t HostedPlugin::answer(HostOp op, std::int32_t index, std::intptr_t value, void* ptr, float opt)
{
    switch (op)
    {
    case HostOp::automate:
    case HostOp::begin_edit:
    case HostOp::end_edit:
    case HostOp::size_window:
        return answer_editor(op, index, value, opt);
    case HostOp::get_time:
        ++_requests.get_time;
        return reinterpret_cast<std::intptr_t>(_transport.use_time_info());
    case HostOp::tempo_at:
        return static_cast<std::intptr_t>(_transport.get_tempo() * 10000.0);
    case HostOp::want_midi:
    case HostOp::need_idle:
    case HostOp::update_display:
    case HostOp::io_changed:
        return 1;
    case HostOp::get_num_automatable_parameters:
        return _effect != nullptr ? _effect->num_params : 0;
    case HostOp::get_sample_rate:
        return static_cast<std::intptr_t>(_sample_rate);
    case HostOp::get_block_size:
        return _block_size;
    case HostOp::get_current_process_level:
        return static_cast<std::intptr_t>(t_processing ? lumo::vst2::ProcessLevel::realtime
                                                       : lumo::vst2::ProcessLevel::user);
    case HostOp::get_automation_state:
        return 1;  // off: the host neither reads nor writes automation
    case HostOp::get_vendor_string:
        return copy_host_text(ptr, "Velnor");
    case HostOp::get_product_string:
        return copy_host_text(ptr, "vsthost");
    case HostOp::get_vendor_version:
        return 1000;
    case HostOp::can_do:
        return answer_can_do(static_cast<const char*>(ptr));
    case HostOp::get_language:
        return static_cast<std::intptr_t>(lumo::vst2::HostLanguage::english);
    case HostOp::get_directory:
        return reinterpret_cast<std::intptr_t>(_directory.c_str());
    default:
        // Pin queries answer 0 (connected); everything else is unknown.
        return 0;
    }
}

}  // namespace vsthost
