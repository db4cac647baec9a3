#include "lumo/midi/MidiMgr.h"

#include "basic/ConfKeyContentString.h"
#include "basic/ConfKeyData.h"
#include "basic/ConfKeyMulti.h"
#include "lumo/DspInterface.h"
#include "lumo/NormalizedParamInterface.h"
#include "lumo/midi/MidiInInterface.h"
#include "lumo/midi/MidiOutInterface.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace lumo
{
namespace
{

constexpr const char* section_midi = "midi";
constexpr const char* section_map = "control_map";
constexpr const char* prefix_id = "id_";
constexpr const char* prefix_cc = "cc_";
constexpr const char* prefix_rpn = "rpn_";
constexpr const char* prefix_nrpn = "nrpn_";
constexpr int param_name_capacity = 128;
constexpr int controller_status = 11;
constexpr int max_controller = 127;

bool starts_with_ignoring_case(const std::string& text, const char* prefix)
{
    const std::size_t n = std::strlen(prefix);
    if (text.size() < n)
    {
        return false;
    }
    for (std::size_t i = 0; i < n; ++i)
    {
        if (std::tolower(static_cast<unsigned char>(text[i])) != std::tolower(static_cast<unsigned char>(prefix[i])))
        {
            return false;
        }
    }
    return true;
}

// A decimal number at the start of text (at least one digit), or -1. Numbers
// beyond 32 bits count as not parsed, like any other garbage.
long parse_number(const char* text, bool allow_sign)
{
    if (!std::isdigit(static_cast<unsigned char>(*text)) && !(allow_sign && (*text == '-' || *text == '+')))
    {
        return -1;
    }
    char* end = nullptr;
    errno = 0;
    const long n = std::strtol(text, &end, 10);
    if (end == text || errno == ERANGE || n > 0x7FFFFFFFL)
    {
        return -1;
    }
    return n;
}

std::string format_number(const char* prefix, int n)
{
    char text[32];
    std::snprintf(text, sizeof(text), "%s%d", prefix, n);
    return text;
}

}  // namespace

std::int32_t MidiMgr::make_id(int selector, int number)
{
    // Only 14 bits of a number and 15 of a selector fit a 32-bit id; anything
    // larger would alias another controller's id, and no MIDI message makes it.
    if (selector < 0 || selector > 0x7FFF)
    {
        return -1;
    }
    if (selector != rpn_selector && selector != nrpn_selector)
    {
        return selector << 16;
    }
    return number >= 0 && number <= max_number ? (selector << 16) + number : -1;
}

void MidiMgr::learn(std::int32_t id)
{
    const int pending = get_pending_learn();
    if (pending < 0)
    {
        return;
    }
    _map.bind(pending, id);
    _last_learnt_param.store(pending, std::memory_order_release);
    _last_learnt_id.store(id, std::memory_order_release);
    _learn_count.fetch_add(1, std::memory_order_acq_rel);
    if (_options.get_autobind_mode() == 0)
    {
        // One controller per arming; a concurrent re-arm wins.
        int expected = pending;
        _pending_learn.compare_exchange_strong(expected, -1, std::memory_order_acq_rel);
    }
}

void MidiMgr::map_controller(std::int32_t id, std::int32_t value14, int& param_index, float& value)
{
    learn(id);
    param_index = _map.find_index(id);
    value = param_index >= 0 ? static_cast<float>(value14) * (1.0f / 16383.0f) : -1.0f;
}

int MidiMgr::bind(int param_index, int selector, int number)
{
    return _map.bind(param_index, make_id(selector, number));
}

int MidiMgr::unbind(int param_index)
{
    _map.unbind(param_index);
    return 0;
}

void MidiMgr::bind_all_to_nrpn()
{
    _map.clear();
    const int n = _dsp != nullptr ? _dsp->get_nbr_param() : 0;
    for (int i = 0; i < n; ++i)
    {
        bind(i, nrpn_selector, i);
    }
}

int MidiMgr::send_param(int channel, int param_index, float value)
{
    const std::int32_t id = _map.get_id(param_index);
    if (id < 0)
    {
        return -2;
    }
    // Normalized values are finite and in [0, 1]; anything else has no MIDI
    // value and is not echoed.
    if (!(value >= 0.0f && value <= 1.0f))
    {
        return -1;
    }
    // Halves round up: twice the value, rounded, halved.
    const int v = static_cast<int>(std::lrint(2.0 * value * 16383.0 + 0.5)) >> 1;
    const int selector = id >> 16;
    const int number = id % 16384;
    int taken = 0;
    if (selector == nrpn_selector)
    {
        taken = nrpn_change(channel, number, v);
    }
    else if (selector == rpn_selector)
    {
        taken = rpn_change(channel, number, v);
    }
    else if (selector > max_controller)
    {
        // A map file may name a controller MIDI does not have; it cannot be sent.
        return -1;
    }
    else if (selector < 32)
    {
        // Controllers 0..31 carry the high 7 bits, 32..63 the low ones.
        taken = raw_message(channel, controller_status, selector, v / 128);
        if (taken != 0)
        {
            taken = raw_message(channel, controller_status, selector + 32, v % 128);
        }
    }
    else
    {
        taken = raw_message(channel, controller_status, selector, std::min((v + 64) / 128, max_controller));
    }
    return taken != 0 ? 0 : -1;
}

template <class Device, class Call>
int MidiMgr::with_device(const std::atomic<Device*>& device, Call call)
{
    // Sequentially consistent on both sides: either the changer sees this
    // user, or this user sees the new device.
    _device_users.fetch_add(1);
    Device* current = device.load();
    const int result = current != nullptr ? call(*current) : 0;
    _device_users.fetch_sub(1);
    return result;
}

void MidiMgr::wait_for_users() const
{
    while (_device_users.load() != 0)
    {
        std::this_thread::yield();
    }
}

void MidiMgr::set_output(MidiOutInterface* output)
{
    _output.store(output);
    wait_for_users();
}

void MidiMgr::set_input(MidiInInterface* input)
{
    _input.store(input);
    wait_for_users();
}

void MidiMgr::block_start()
{
    with_device(_input, [](MidiInInterface& in) { return in.block_start(); });
    with_device(_output, [](MidiOutInterface& out) { return out.block_start(); });
}

void MidiMgr::block_end()
{
    with_device(_input, [](MidiInInterface& in) { return in.block_end(); });
    with_device(_output, [](MidiOutInterface& out) { return out.block_end(); });
}

// ---- Settings ------------------------------------------------------------------

int MidiMgr::save_settings(basic::ConfKeyMulti& root)
{
    basic::ConfKeyMulti midi(section_midi);
    basic::ConfKeyMulti map(section_map);
    map.set_comment(std::string("Bind param with ") + prefix_cc + ", " + prefix_rpn + " or " + prefix_nrpn
                    + " as prefix + CC/(N)RPN #.");
    const int nbr_params = _dsp != nullptr ? _dsp->get_nbr_param() : 0;
    // The table is indexed by parameter, so the walk is in parameter order.
    for (int index = 0; index < _map.get_end(); ++index)
    {
        const std::int32_t id = _map.get_id(index);
        if (id < 0)
        {
            continue;
        }
        const int selector = id >> 16;
        const int number = id % 16384;
        std::string value = selector == nrpn_selector  ? format_number(prefix_nrpn, number)
                          : selector == rpn_selector ? format_number(prefix_rpn, number)
                                                     : format_number(prefix_cc, selector);
        basic::ConfKeyData key(format_number(prefix_id, index), value);
        if (index < nbr_params)
        {
            char name[param_name_capacity] = {};
            _dsp->use_param(index).get_name(name, param_name_capacity);
            name[param_name_capacity - 1] = '\0';
            key.set_comment(name);
        }
        map.set_key(key);
    }
    midi.set_key(map);
    if (_port_selector != nullptr)
    {
        const int err = _port_selector->save_settings(midi);
        if (err != 0)
        {
            return err;
        }
    }
    root.set_key(midi);
    return 0;
}

bool MidiMgr::parse_entry(const std::string& name, const std::string& value, int& index, std::int32_t& id)
{
    if (!starts_with_ignoring_case(name, prefix_id))
    {
        return false;
    }
    const long n = parse_number(name.c_str() + std::strlen(prefix_id), true);
    if (n < 0)
    {
        return false;
    }
    int selector = -1;
    const char* rest = nullptr;
    if (starts_with_ignoring_case(value, prefix_cc))
    {
        rest = value.c_str() + std::strlen(prefix_cc);
    }
    else if (starts_with_ignoring_case(value, prefix_rpn))
    {
        selector = rpn_selector;
        rest = value.c_str() + std::strlen(prefix_rpn);
    }
    else if (starts_with_ignoring_case(value, prefix_nrpn))
    {
        selector = nrpn_selector;
        rest = value.c_str() + std::strlen(prefix_nrpn);
    }
    else
    {
        return false;
    }
    const long number = parse_number(rest, false);
    if (number < 0)
    {
        return false;
    }
    id = selector < 0 ? make_id(static_cast<int>(std::min(number, 0x8000L)), 0)
                      : make_id(selector, static_cast<int>(std::min(number, 0x8000L)));
    // The map has room for every control an effect of this framework offers;
    // an index beyond it names nothing that could be driven.
    index = static_cast<int>(std::min(n, static_cast<long>(MidiControlMap::capacity)));
    return id >= 0 && index < MidiControlMap::capacity;
}

int MidiMgr::load_map(const basic::ConfKeyMulti& map)
{
    for (int k = 0; k < map.get_nbr_keys(); ++k)
    {
        const auto* leaf = dynamic_cast<const basic::ConfKeyData*>(&map.use_key(k));
        const auto* text = leaf != nullptr ? dynamic_cast<const basic::ConfKeyContentString*>(&leaf->use_content())
                                           : nullptr;
        int index = -1;
        std::int32_t id = -1;
        if (text != nullptr && parse_entry(leaf->get_name(), text->get_string(), index, id))
        {
            _map.bind(index, id);
        }
    }
    return 0;
}

int MidiMgr::load_settings(const basic::ConfKeyMulti& root)
{
    const int m = root.find_key_multi(section_midi);
    if (m < 0)
    {
        return 0;
    }
    const auto& midi = dynamic_cast<const basic::ConfKeyMulti&>(root.use_key(m));
    const int c = midi.find_key_multi(section_map);
    if (c >= 0)
    {
        load_map(dynamic_cast<const basic::ConfKeyMulti&>(midi.use_key(c)));
    }
    return _port_selector != nullptr ? _port_selector->load_settings(midi) : 0;
}

// ---- Receiver: forwarded to the output --------------------------------------------

int MidiMgr::set_event_time(std::int32_t offset)
{
    return with_device(_output, [&](MidiOutInterface& out) { return out.set_event_time(offset); });
}

int MidiMgr::note_on(int channel, int note, float pitch, int zero, float velocity, int one)
{
    return with_device(_output, [&](MidiOutInterface& out) { return out.note_on(channel, note, pitch, zero, velocity, one); });
}

int MidiMgr::note_off(int channel, int note, float velocity)
{
    return with_device(_output, [&](MidiOutInterface& out) { return out.note_off(channel, note, velocity); });
}

int MidiMgr::poly_pressure(int channel, int note, float pressure)
{
    return with_device(_output, [&](MidiOutInterface& out) { return out.poly_pressure(channel, note, pressure); });
}

int MidiMgr::pitch_bend(int channel, float bend)
{
    return with_device(_output, [&](MidiOutInterface& out) { return out.pitch_bend(channel, bend); });
}

int MidiMgr::program_change(int channel, int program)
{
    return with_device(_output, [&](MidiOutInterface& out) { return out.program_change(channel, program); });
}

int MidiMgr::rpn_change(int channel, int number, int value)
{
    return with_device(_output, [&](MidiOutInterface& out) { return out.rpn_change(channel, number, value); });
}

int MidiMgr::nrpn_change(int channel, int number, int value)
{
    return with_device(_output, [&](MidiOutInterface& out) { return out.nrpn_change(channel, number, value); });
}

int MidiMgr::control_change(int channel, int controller, int value)
{
    return with_device(_output, [&](MidiOutInterface& out) { return out.control_change(channel, controller, value); });
}

int MidiMgr::raw_message(int channel, int status, int data1, int data2)
{
    return with_device(_output, [&](MidiOutInterface& out) { return out.raw_message(channel, status, data1, data2); });
}

int MidiMgr::raw_byte(int status)
{
    return with_device(_output, [&](MidiOutInterface& out) { return out.raw_byte(status); });
}

int MidiMgr::raw_message3(int status, int data1, int data2)
{
    return with_device(_output, [&](MidiOutInterface& out) { return out.raw_message3(status, data1, data2); });
}

int MidiMgr::reserved_a(int a, int b)
{
    return with_device(_output, [&](MidiOutInterface& out) { return out.reserved_a(a, b); });
}

int MidiMgr::reserved_b()
{
    return with_device(_output, [&](MidiOutInterface& out) { return out.reserved_b(); });
}

}  // namespace lumo
