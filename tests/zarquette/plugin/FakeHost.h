#pragma once

#include "lumo/vst2/Vst2Abi.h"
#include "lumo/vst2/Vst2Entry.h"
#include "lumo/vst2/Vst2WinPlugin.h"
#include "zarquette/plugin/ZarquetteRecipe.h"

#include <array>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

// A host's MIDI event list of any length, laid out as the host lays it out.
struct MidiEventList
{
    MidiEventList& add(int frame, int status, int d1, int d2)
    {
        lumo::vst2::MidiEvent e{};
        e.type = lumo::vst2::event_types::midi;
        e.byte_size = sizeof(e);
        e.delta_frames = frame;
        e.midi_data[0] = static_cast<char>(status);
        e.midi_data[1] = static_cast<char>(d1);
        e.midi_data[2] = static_cast<char>(d2);
        events.push_back(e);
        return *this;
    }
    // The NRPN number with a 14-bit value, as the four controllers that carry it.
    MidiEventList& nrpn(int frame, int number, int value)
    {
        return add(frame, 0xB0, 99, number / 128)
            .add(frame, 0xB0, 98, number % 128)
            .add(frame, 0xB0, 6, value / 128)
            .add(frame, 0xB0, 38, value % 128);
    }
    lumo::vst2::Events* build()
    {
        block.assign(2 + events.size(), 0);
        block[0] = static_cast<std::intptr_t>(events.size());
        for (std::size_t i = 0; i < events.size(); ++i)
        {
            block[2 + i] = reinterpret_cast<std::intptr_t>(&events[i]);
        }
        return reinterpret_cast<lumo::vst2::Events*>(block.data());
    }

    std::vector<lumo::vst2::MidiEvent> events;
    std::vector<std::intptr_t> block;
};

// A scriptable VST 2 host for the plug-in's tests: answers the plug-in's
// requests from its fields and counts them. One host is current at a time.
class FakeHost
{
public:
    FakeHost()
    {
        time_info.tempo = 120.0;
        time_info.sample_rate = 44100.0;
        time_info.flags = lumo::vst2::time_info_flags::tempo_valid;
        current.store(this);
    }
    ~FakeHost() { current.store(nullptr); }

    static std::intptr_t LUMO_VST2_CALL callback(lumo::vst2::AEffect* /*effect*/, std::int32_t opcode,
                                                 std::int32_t index, std::intptr_t value, void* ptr, float opt)
    {
        FakeHost* host = current.load();
        return host != nullptr ? host->answer(opcode, index, value, ptr, opt) : 0;
    }

    int count(lumo::vst2::HostOp op) const { return _counts[static_cast<std::size_t>(op)].load(); }

    // Loads the plug-in through its entry point, or through another recipe.
    lumo::vst2::AEffect* open_plugin(const lumo::Vst2PluginRecipe& recipe = zarquette::get_vst2_recipe())
    {
        return lumo::vst2_entry(&FakeHost::callback, recipe);
    }
    static std::intptr_t dispatch(lumo::vst2::AEffect* e, lumo::vst2::PluginOp op, std::int32_t index = 0,
                                  std::intptr_t value = 0, void* ptr = nullptr, float opt = 0.0f)
    {
        return e->dispatcher(e, static_cast<std::int32_t>(op), index, value, ptr, opt);
    }
    static void close_plugin(lumo::vst2::AEffect* e) { dispatch(e, lumo::vst2::PluginOp::close); }
    static lumo::Vst2WinPlugin& adapter_of(lumo::vst2::AEffect* e)
    {
        return *static_cast<lumo::Vst2WinPlugin*>(lumo::AudioEffect::from_aeffect(e));
    }

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
    static void copy_out(void* ptr, const std::string& text)
    {
        std::strncpy(static_cast<char*>(ptr), text.c_str(), 63);
        static_cast<char*>(ptr)[63] = '\0';
    }

    void keep_events(const lumo::vst2::Events* events)
    {
        ++sent_lists;
        sent_events += events->num_events;
        for (int i = 0; keep_midi && i < events->num_events; ++i)
        {
            const auto* e = reinterpret_cast<const lumo::vst2::MidiEvent*>(events->events[i]);
            char text[16];
            std::snprintf(text, sizeof(text), "%02X %02X %02X", e->midi_data[0] & 0xFF, e->midi_data[1] & 0xFF,
                          e->midi_data[2] & 0xFF);
            sent_midi.push_back(e->type == lumo::vst2::event_types::midi && e->byte_size == 32 ? text : "bad event");
        }
    }

    std::intptr_t answer(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr, float opt)
    {
        using lumo::vst2::HostOp;
        if (opcode >= 0 && opcode < static_cast<std::int32_t>(_counts.size()))
        {
            _counts[static_cast<std::size_t>(opcode)].fetch_add(1);
        }
        switch (static_cast<HostOp>(opcode))
        {
        case HostOp::version:
            return version;
        case HostOp::automate:
            last_automated_index.store(index);
            last_automated_value.store(opt);
            return 0;
        case HostOp::get_time:
            last_time_mask.store(static_cast<std::int32_t>(value));
            return has_time_info ? reinterpret_cast<std::intptr_t>(&time_info) : 0;
        case HostOp::pin_connected:
            // 0 means connected; pin 1 is the second channel of each direction.
            return index == 1 && !(value == 0 ? second_input_connected : second_output_connected) ? 1 : 0;
        case HostOp::get_num_automatable_parameters:
            return automatable_params;
        case HostOp::get_vendor_string:
            if (fail_vendor_request)
            {
                throw std::runtime_error("FakeHost: vendor string refused");
            }
            copy_out(ptr, vendor);
            return 1;
        case HostOp::get_product_string:
            copy_out(ptr, product);
            return 1;
        case HostOp::can_do:
            return can_size_window && std::strcmp(static_cast<const char*>(ptr), "sizeWindow") == 0 ? 1 : 0;
        case HostOp::begin_edit:
            last_begin_edit.store(index);
            return 1;
        case HostOp::end_edit:
            last_end_edit.store(index);
            return 1;
        case HostOp::process_events:
            keep_events(static_cast<const lumo::vst2::Events*>(ptr));
            return 1;
        default:
            return 0;
        }
    }

    static inline std::atomic<FakeHost*> current{nullptr};
    std::array<std::atomic<int>, 64> _counts{};
};
