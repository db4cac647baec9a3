#pragma once

#include "tests/lumo/lv2/Lv2TestAtoms.h"
#include "tests/sys/ScratchKeyStorePosix.h"

#include "lumo/DspInterface.h"
#include "lumo/NormalizedParamInterface.h"
#include "lumo/lv2/Lv2Plugin.h"
#include "zarquette/lv2/ZarquetteLv2Recipe.h"

#include <lv2/atom/util.h>
#include <lv2/core/lv2.h>
#include <lv2/log/log.h>
#include <lv2/midi/midi.h>
#include <lv2/state/state.h>
#include <lv2/time/time.h>

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace zq_test
{

// The plug-in reads and writes the per-user key store as it starts: the test
// program's instances use a scratch one, never the user's.
inline ::testing::Environment* const scratch_store = ::testing::AddGlobalTestEnvironment(new ScratchKeyStore);

// The host's side of the plug-in's state: values by key, as a host keeps them.
struct StateStore
{
    struct Value
    {
        std::uint32_t type = 0;
        std::vector<std::uint8_t> bytes;
    };

    static LV2_State_Status store(LV2_State_Handle handle, std::uint32_t key, const void* value, std::size_t size,
                                  std::uint32_t type, std::uint32_t /*flags*/)
    {
        const auto* bytes = static_cast<const std::uint8_t*>(value);
        static_cast<StateStore*>(handle)->values[key] = Value{type, std::vector<std::uint8_t>(bytes, bytes + size)};
        return LV2_STATE_SUCCESS;
    }
    static const void* retrieve(LV2_State_Handle handle, std::uint32_t key, std::size_t* size, std::uint32_t* type,
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

    std::map<std::uint32_t, Value> values;
};

// Events for the plug-in's input port, of the kinds a host sends.
class Lv2Input : public SequenceBytes
{
public:
    explicit Lv2Input(UridMap& map) : SequenceBytes(map.id(LV2_ATOM__Sequence)), _map(map) {}

    Lv2Input& midi(std::int64_t frame, const std::vector<std::uint8_t>& bytes)
    {
        event(frame, _map.id(LV2_MIDI__MidiEvent), bytes);
        return *this;
    }
    Lv2Input& cc(std::int64_t frame, int controller, int value)
    {
        return midi(frame, {0xB0, static_cast<std::uint8_t>(controller), static_cast<std::uint8_t>(value)});
    }
    // The NRPN number with a 14-bit value, as the four controllers that carry it.
    Lv2Input& nrpn(std::int64_t frame, int number, int value)
    {
        cc(frame, 99, number / 128).cc(frame, 98, number % 128);
        return cc(frame, 6, value / 128).cc(frame, 38, value % 128);
    }
    // The host's transport position with its tempo.
    Lv2Input& tempo(std::int64_t frame, float bpm)
    {
        const std::uint32_t key = _map.id(LV2_TIME__beatsPerMinute);
        return object(frame, ObjectBytes(_map.id(LV2_TIME__Position)).property(key, _map.id(LV2_ATOM__Float), bpm));
    }
    Lv2Input& object(std::int64_t frame, const ObjectBytes& object)
    {
        event(frame, _map.id(LV2_ATOM__Object), object.bytes);
        return *this;
    }

private:
    UridMap& _map;
};

// Zarquette through its LV2 descriptor, as a host runs it: every port
// connected to buffers of the rig, the URID map and a log that keeps what the
// plug-in writes. Several rigs may share one map (a saved state names its
// keys by the map's numbers).
class Lv2Rig
{
public:
    static constexpr std::uint32_t atom_capacity = 8192;

    // without_features: a host that offers nothing, as lv2apply.
    explicit Lv2Rig(UridMap& map, double rate = 44100.0, bool without_features = false, std::uint32_t block = 256)
        : in_l(block), in_r(block), out_l(block), out_r(block), _map(map), _atom_in(atom_capacity / 8),
          _atom_out(atom_capacity / 8)
    {
        const LV2_Feature map_feature{LV2_URID__map, const_cast<LV2_URID_Map*>(map.use())};
        const LV2_Feature log_feature{LV2_LOG__log, &_log};
        const LV2_Feature* features[] = {&map_feature, &log_feature, nullptr};
        const LV2_Descriptor& d = use_descriptor();
        // Without features: the list's end alone.
        handle = d.instantiate(&d, rate, "/nowhere/zarquette.lv2/", features + (without_features ? 2 : 0));
        if (handle == nullptr)
        {
            throw std::runtime_error("no instance");
        }
        const lumo::Lv2PortLayout& layout = plugin().use_layout();
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
    ~Lv2Rig()
    {
        use_descriptor().deactivate(handle);
        use_descriptor().cleanup(handle);
    }
    Lv2Rig(const Lv2Rig&) = delete;
    Lv2Rig& operator=(const Lv2Rig&) = delete;

    static const LV2_Descriptor& use_descriptor() { return *zarquette::get_lv2_descriptor().use(); }
    lumo::Lv2Plugin& plugin() { return *static_cast<lumo::Lv2Plugin*>(handle); }
    Lv2Input input() { return Lv2Input(_map); }
    // The port of a parameter by its symbol.
    float& control(const char* symbol)
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
    float param(int index) { return plugin().use_dsp().use_param(index).get_norm(); }
    std::vector<float> params()
    {
        std::vector<float> out;
        for (int i = 0; i < plugin().use_dsp().get_nbr_param(); ++i)
        {
            out.push_back(param(i));
        }
        return out;
    }
    // The same input at every frame, so that blocks split anywhere hear alike.
    void feed(float left, float right)
    {
        std::fill(in_l.begin(), in_l.end(), left);
        std::fill(in_r.begin(), in_r.end(), right);
    }

    // Puts a sequence into the input port for the next blocks (an empty one
    // until then); frames of the events count from each block's start.
    void send(SequenceBytes& sequence)
    {
        const LV2_Atom_Sequence* seq = sequence.get();
        std::memcpy(_atom_in.data(), seq, sizeof(LV2_Atom) + seq->atom.size);
    }
    void clear_input()
    {
        Lv2Input empty = input();
        send(empty);
    }
    // One block of frames (at most the rig's block), with the events for it alone.
    void run(std::uint32_t frames)
    {
        auto* out = reinterpret_cast<LV2_Atom_Sequence*>(_atom_out.data());
        out->atom.size = atom_capacity - sizeof(LV2_Atom);
        out->atom.type = 0;
        use_descriptor().run(handle, frames);
    }
    void run(std::uint32_t frames, SequenceBytes& events)
    {
        send(events);
        run(frames);
        clear_input();
    }
    // All the plug-in put into its output in the last block, for an editor to hear.
    const LV2_Atom_Sequence& use_output() const
    {
        return *reinterpret_cast<const LV2_Atom_Sequence*>(_atom_out.data());
    }
    // The MIDI among it, as hex text.
    std::vector<std::string> sent_midi()
    {
        std::vector<std::string> out;
        LV2_ATOM_SEQUENCE_FOREACH(&use_output(), e)
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
    // The host's log, which keeps what is written to it in log: an editor
    // beside the plug-in writes there too.
    const LV2_Log_Log* use_log() const { return &_log; }

    LV2_State_Status save(StateStore& store)
    {
        return use_state().save(handle, &StateStore::store, &store, LV2_STATE_IS_POD, nullptr);
    }
    LV2_State_Status restore(StateStore& store)
    {
        return use_state().restore(handle, &StateStore::retrieve, &store, 0, nullptr);
    }

    LV2_Handle handle = nullptr;
    std::vector<float> in_l, in_r, out_l, out_r;
    std::string log;

private:
    static int log_vprintf(LV2_Log_Handle handle, LV2_URID /*type*/, const char* fmt, va_list args)
    {
        char text[1024];
        const int n = std::vsnprintf(text, sizeof(text), fmt, args);
        static_cast<Lv2Rig*>(handle)->log += text;
        return n;
    }
    static int log_printf(LV2_Log_Handle handle, LV2_URID type, const char* fmt, ...)
    {
        va_list args;
        va_start(args, fmt);
        const int n = log_vprintf(handle, type, fmt, args);
        va_end(args);
        return n;
    }
    static const LV2_State_Interface& use_state()
    {
        return *static_cast<const LV2_State_Interface*>(use_descriptor().extension_data(LV2_STATE__interface));
    }

    UridMap& _map;
    LV2_Log_Log _log{this, &Lv2Rig::log_printf, &Lv2Rig::log_vprintf};
    std::array<float, 6> _controls{};
    std::vector<std::uint64_t> _atom_in;
    std::vector<std::uint64_t> _atom_out;
};

}  // namespace zq_test
