#pragma once

#include "lumo/vst2/Vst2Abi.h"
#include "lumo/vst2/Vst2Entry.h"
#include "lumo/vst2/Vst2WinPlugin.h"

#include <array>
#include <atomic>
#include <string>
#include <vector>

// A host's MIDI event list of any length, laid out as the host lays it out.
struct MidiEventList
{
    MidiEventList& add(int frame, int status, int d1, int d2);
    // The NRPN number with a 14-bit value, as the four controllers that carry it.
    MidiEventList& nrpn(int frame, int number, int value);
    lumo::vst2::Events* build();

    std::vector<lumo::vst2::MidiEvent> events;
    std::vector<std::intptr_t> block;
};

// A scriptable VST 2 host for the plug-in's tests: answers the plug-in's
// requests from its fields and counts them. One host is current at a time.
class FakeHost
{
public:
    FakeHost();
    ~FakeHost();

    static std::intptr_t LUMO_VST2_CALL callback(lumo::vst2::AEffect* effect, std::int32_t opcode, std::int32_t index,
                                                 std::intptr_t value, void* ptr, float opt);

    int count(lumo::vst2::HostOp op) const { return _counts[static_cast<std::size_t>(op)].load(); }

    // Loads the plug-in through its entry point, or through another recipe.
    lumo::vst2::AEffect* open_plugin();
    lumo::vst2::AEffect* open_plugin(const lumo::Vst2PluginRecipe& recipe);
    static std::intptr_t dispatch(lumo::vst2::AEffect* e, lumo::vst2::PluginOp op, std::int32_t index = 0,
                                  std::intptr_t value = 0, void* ptr = nullptr, float opt = 0.0f);
    static void close_plugin(lumo::vst2::AEffect* e);
    static lumo::Vst2WinPlugin& adapter_of(lumo::vst2::AEffect* e);

    // What the host answers.
    std::intptr_t version = 2400;
    bool has_time_info = true;
    lumo::vst2::TimeInfo time_info{};
    bool second_input_connected = true;
    bool second_output_connected = true;
    std::intptr_t automatable_params = 0;
    std::string vendor = "Test Vendor";
    std::string product = "Test Host";
    bool can_size_window = false;
    std::intptr_t parameter_quantization = 0;
    bool accept_size_window = false;
    // Throws from the vendor string request: the Windows adapter asks it in
    // its constructor, after its base has been built.
    bool fail_vendor_request = false;

    // What the plug-in sent last.
    std::atomic<int> last_automated_index{-1};
    std::atomic<float> last_automated_value{-1.0f};
    std::atomic<int> last_begin_edit{-1};
    std::atomic<int> last_end_edit{-1};
    std::atomic<std::int32_t> last_time_mask{-1};
    // Every MIDI event handed to the host, as hexadecimal text ("B0 63 00"),
    // and the number of lists it came in. Only the processing thread writes them.
    std::vector<std::string> sent_midi;
    int sent_lists = 0;
    int sent_events = 0;
    // Off: only count, so that a test can check that processing allocates nothing.
    bool keep_midi = true;

private:
    void keep_events(const lumo::vst2::Events* events);
    std::intptr_t answer(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr, float opt);

    std::array<std::atomic<int>, 64> _counts{};
};
