#include "Lv2Rig.h"

#include "lumo/DspInterface.h"
#include "lumo/NormalizedParamInterface.h"
#include "tests/sys/ScratchKeyStorePosix.h"
#include "zarquette/lv2/ZarquetteLv2Recipe.h"

#include <lv2/atom/util.h>
#include <lv2/midi/midi.h>
#include <lv2/time/time.h>
#include <lv2/urid/urid.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace zq_test
{

// The plug-in reads and writes the per-user key store as it starts: the test
// program's instances use a scratch one, never the user's.
::testing::Environment* const scratch_store = ::testing::AddGlobalTestEnvironment(new ScratchKeyStore);

LV2_State_Status StateStore::store(LV2_State_Handle handle, std::uint32_t key, const void* value, std::size_t size,
                                   std::uint32_t type, std::uint32_t /*flags*/)
{
    const auto* bytes = static_cast<const std::uint8_t*>(value);
    static_cast<StateStore*>(handle)->values[key] = Value{type, std::vector<std::uint8_t>(bytes, bytes + size)};
    return LV2_STATE_SUCCESS;
}

const void* StateStore::retrieve(LV2_State_Handle handle, std::uint32_t key, std::size_t* size, std::uint32_t* type,
                                 std::uint32_t* flags)
{
    auto& values = static_cast<StateStore*>(handle)->values;
    const auto found = values.find(key);
    if (found == values.end())
    {
        return nullptr;
    }
    *size = found->second.bytes.size();
    *type = found->second.type;
    *flags = LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE;
    return found->second.bytes.data();
}

Lv2Input::Lv2Input(UridMap& map) : SequenceBytes(map.id(LV2_ATOM__Sequence)), _map(map)
{
}

Lv2Input& Lv2Input::midi(std::int64_t frame, const std::vector<std::uint8_t>& bytes)
{
    event(frame, _map.id(LV2_MIDI__MidiEvent), bytes);
    return *this;
}

Lv2Input& Lv2Input::cc(std::int64_t frame, int controller, int value)
{
    return midi(frame, {0xB0, static_cast<std::uint8_t>(controller), static_cast<std::uint8_t>(value)});
}

Lv2Input& Lv2Input::nrpn(std::int64_t frame, int number, int value)
{
    return cc(frame, 99, number / 128).cc(frame, 98, number % 128).cc(frame, 6, value / 128).cc(frame, 38, value % 128);
}

Lv2Input& Lv2Input::tempo(std::int64_t frame, float bpm)
{
    const std::uint32_t position = _map.id(LV2_TIME__Position);
    return object(frame, ObjectBytes(position).property(_map.id(LV2_TIME__beatsPerMinute), _map.id(LV2_ATOM__Float), bpm));
}

Lv2Input& Lv2Input::object(std::int64_t frame, const ObjectBytes& object)
{
    event(frame, _map.id(LV2_ATOM__Object), object.bytes);
    return *this;
}

const LV2_Descriptor& Lv2Rig::use_descriptor()
{
    return *zarquette::get_lv2_descriptor().use();
}

Lv2Rig::Lv2Rig(UridMap& map, double rate, bool without_features, std::uint32_t block)
    : in_l(block), in_r(block), out_l(block), out_r(block), _map(map), _atom_in(atom_capacity / 8),
      _atom_out(atom_capacity / 8)
{
    const LV2_Feature map_feature{LV2_URID__map, const_cast<LV2_URID_Map*>(map.use())};
    const LV2_Feature log_feature{LV2_LOG__log, &_log};
    const LV2_Feature* features[] = {&map_feature, &log_feature, nullptr};
    const LV2_Feature* none[] = {nullptr};
    handle = use_descriptor().instantiate(&use_descriptor(), rate, "/nowhere/zarquette.lv2/",
                                          without_features ? none : features);
    if (handle == nullptr)
    {
        throw std::runtime_error("no instance");
    }
    const lumo::Lv2PortLayout& layout = plugin().use_layout();
    const LV2_Descriptor& d = use_descriptor();
    d.connect_port(handle, layout.get_first_input(), in_l.data());
    d.connect_port(handle, layout.get_first_input() + 1, in_r.data());
    d.connect_port(handle, layout.get_first_output(), out_l.data());
    d.connect_port(handle, layout.get_first_output() + 1, out_r.data());
    for (std::uint32_t i = 0; i < _controls.size(); ++i)
    {
        _controls[i] = plugin().use_control(static_cast<int>(i)).get_default();
        d.connect_port(handle, layout.get_first_control() + i, &_controls[i]);
    }
    clear_input();
    d.connect_port(handle, layout.get_atom_in(), _atom_in.data());
    d.connect_port(handle, layout.get_atom_out(), _atom_out.data());
    d.activate(handle);
}

Lv2Rig::~Lv2Rig()
{
    use_descriptor().deactivate(handle);
    use_descriptor().cleanup(handle);
}

float& Lv2Rig::control(const char* symbol)
{
    for (std::size_t i = 0; i < _controls.size(); ++i)
    {
        if (plugin().use_control(static_cast<int>(i)).get_symbol() == symbol)
        {
            return _controls[i];
        }
    }
    throw std::invalid_argument(symbol);
}

float Lv2Rig::param(int index)
{
    return plugin().use_dsp().use_param(index).get_norm();
}

std::vector<float> Lv2Rig::params()
{
    std::vector<float> out;
    for (int i = 0; i < plugin().use_dsp().get_nbr_param(); ++i)
    {
        out.push_back(param(i));
    }
    return out;
}

void Lv2Rig::feed(float left, float right)
{
    std::fill(in_l.begin(), in_l.end(), left);
    std::fill(in_r.begin(), in_r.end(), right);
}

void Lv2Rig::send(SequenceBytes& sequence)
{
    const LV2_Atom_Sequence* seq = sequence.get();
    std::memcpy(_atom_in.data(), seq, sizeof(LV2_Atom) + seq->atom.size);
}

void Lv2Rig::clear_input()
{
    Lv2Input empty = input();
    send(empty);
}

void Lv2Rig::run(std::uint32_t frames)
{
    auto* out = reinterpret_cast<LV2_Atom_Sequence*>(_atom_out.data());
    out->atom.size = atom_capacity - sizeof(LV2_Atom);
    out->atom.type = 0;
    use_descriptor().run(handle, frames);
}

void Lv2Rig::run(std::uint32_t frames, SequenceBytes& events)
{
    send(events);
    run(frames);
    clear_input();
}

std::vector<std::string> Lv2Rig::sent_midi()
{
    std::vector<std::string> out;
    const auto* seq = reinterpret_cast<const LV2_Atom_Sequence*>(_atom_out.data());
    LV2_ATOM_SEQUENCE_FOREACH(seq, e)
    {
        if (e->body.type != _map.id(LV2_MIDI__MidiEvent))
        {
            continue;
        }
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(e + 1);
        std::string text;
        for (std::uint32_t i = 0; i < e->body.size; ++i)
        {
            char hex[4];
            std::snprintf(hex, sizeof(hex), i == 0 ? "%02X" : " %02X", bytes[i]);
            text += hex;
        }
        out.push_back(text);
    }
    return out;
}

const LV2_Atom_Sequence& Lv2Rig::use_output() const
{
    return *reinterpret_cast<const LV2_Atom_Sequence*>(_atom_out.data());
}

const LV2_State_Interface& Lv2Rig::use_state() const
{
    return *static_cast<const LV2_State_Interface*>(use_descriptor().extension_data(LV2_STATE__interface));
}

LV2_State_Status Lv2Rig::save(StateStore& store)
{
    return use_state().save(handle, &StateStore::store, &store, LV2_STATE_IS_POD, nullptr);
}

LV2_State_Status Lv2Rig::restore(StateStore& store)
{
    return use_state().restore(handle, &StateStore::retrieve, &store, 0, nullptr);
}

int Lv2Rig::log_vprintf(LV2_Log_Handle handle, LV2_URID /*type*/, const char* fmt, va_list args)
{
    char text[1024];
    const int n = std::vsnprintf(text, sizeof(text), fmt, args);
    static_cast<Lv2Rig*>(handle)->log += text;
    return n;
}

int Lv2Rig::log_printf(LV2_Log_Handle handle, LV2_URID type, const char* fmt, ...)
{
    va_list args;
    va_start(args, fmt);
    const int n = log_vprintf(handle, type, fmt, args);
    va_end(args);
    return n;
}

}  // namespace zq_test
