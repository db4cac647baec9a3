#pragma once

#include "tests/lumo/lv2/Lv2TestAtoms.h"

#include "lumo/lv2/Lv2Plugin.h"

#include <lv2/core/lv2.h>
#include <lv2/log/log.h>
#include <lv2/state/state.h>

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace zq_test
{

// The host's side of the plug-in's state: values by key, as a host keeps them.
class StateStore
{
public:
    struct Value
    {
        std::uint32_t type = 0;
        std::vector<std::uint8_t> bytes;
    };

    static LV2_State_Status store(LV2_State_Handle handle, std::uint32_t key, const void* value, std::size_t size,
                                  std::uint32_t type, std::uint32_t flags);
    static const void* retrieve(LV2_State_Handle handle, std::uint32_t key, std::size_t* size, std::uint32_t* type,
                                std::uint32_t* flags);

    std::map<std::uint32_t, Value> values;
};

// Events for the plug-in's input port, of the kinds a host sends.
class Lv2Input : public SequenceBytes
{
public:
    explicit Lv2Input(UridMap& map);
    Lv2Input& midi(std::int64_t frame, const std::vector<std::uint8_t>& bytes);
    Lv2Input& cc(std::int64_t frame, int controller, int value);
    // The NRPN number with a 14-bit value, as the four controllers that carry it.
    Lv2Input& nrpn(std::int64_t frame, int number, int value);
    // The host's transport position with its tempo.
    Lv2Input& tempo(std::int64_t frame, float bpm);
    Lv2Input& object(std::int64_t frame, const ObjectBytes& object);

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
    explicit Lv2Rig(UridMap& map, double rate = 44100.0, bool without_features = false, std::uint32_t block = 256);
    ~Lv2Rig();
    Lv2Rig(const Lv2Rig&) = delete;
    Lv2Rig& operator=(const Lv2Rig&) = delete;

    static const LV2_Descriptor& use_descriptor();
    lumo::Lv2Plugin& plugin() { return *static_cast<lumo::Lv2Plugin*>(handle); }
    Lv2Input input() { return Lv2Input(_map); }
    // The port of a parameter by its symbol.
    float& control(const char* symbol);
    float param(int index);
    std::vector<float> params();
    // The same input at every frame, so that blocks split anywhere hear alike.
    void feed(float left, float right);

    // Puts a sequence into the input port for the next blocks (an empty one
    // until then); frames of the events count from each block's start.
    void send(SequenceBytes& sequence);
    void clear_input();
    // One block of frames (at most the rig's block), with the events for it alone.
    void run(std::uint32_t frames);
    void run(std::uint32_t frames, SequenceBytes& events);
    // The MIDI the plug-in put into its output in the last block, as hex text.
    std::vector<std::string> sent_midi();
    // All it put there, for an editor to hear.
    const LV2_Atom_Sequence& use_output() const;
    // The host's log, which keeps what is written to it in log: an editor
    // beside the plug-in writes there too.
    const LV2_Log_Log* use_log() const { return &_log; }

    LV2_State_Status save(StateStore& store);
    LV2_State_Status restore(StateStore& store);

    LV2_Handle handle = nullptr;
    std::vector<float> in_l, in_r, out_l, out_r;
    std::string log;

private:
    static int log_vprintf(LV2_Log_Handle handle, LV2_URID type, const char* fmt, va_list args);
    static int log_printf(LV2_Log_Handle handle, LV2_URID type, const char* fmt, ...);
    const LV2_State_Interface& use_state() const;

    UridMap& _map;
    LV2_Log_Log _log{this, &Lv2Rig::log_printf, &Lv2Rig::log_vprintf};
    std::array<float, 6> _controls{};
    std::vector<std::uint64_t> _atom_in;
    std::vector<std::uint64_t> _atom_out;
};

}  // namespace zq_test
