#include "PluginFixture.h"

#include "basic/ConfKeyFactory.h"
#include "basic/ConfKeyMulti.h"
#include "lumo/midi/MidiMgr.h"
#include "tests/support/Signal.h"

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace
{

using lumo::vst2::PluginOp;

// A settings section that binds "Oignons" to controller 74 and selects the
// host's output, or none.
std::unique_ptr<basic::ConfKeyInterface> make_settings(bool with_output)
{
    return basic::ConfKeyFactory::use_instance().create_key(
        std::string("Zarquette_config_section = { midi = { control_map = { id_4 = cc_74 } port_out = { name = \"")
        + (with_output ? "VST MIDI Out interface" : "none") + "\" } } }");
}
const basic::ConfKeyMulti& multi(const std::unique_ptr<basic::ConfKeyInterface>& key)
{
    return dynamic_cast<const basic::ConfKeyMulti&>(*key);
}

// The host's threads at once: the audio thread floods the plug-in with mapped
// controllers while a learn comes and goes; an automation thread sets every
// parameter; the main thread reads displays, swaps the bank's chunk, reloads
// the settings (map and output port) and saves them; the editor's thread
// changes parameters, each change echoed to whichever output is selected at
// that moment.
TEST_F(PluginFixture, AudioMidiAutomationChunksSettingsAndTheEditorFromFourThreads)
{
    resume(44100.0f, 32);
    lumo::MidiMgr& mgr = *adapter().use_midi_mgr();
    std::atomic<bool> done{false};
    std::atomic<int> main_rounds{0};
    std::atomic<int> editor_rounds{0};

    std::thread automation([&] {
        for (int round = 0; !done.load(); ++round)
        {
            effect->set_parameter(effect, round % 6, static_cast<float>((round * 7) % 100) / 100.0f);
            (void)effect->get_parameter(effect, round % 6);
        }
    });
    std::thread main_thread([&] {
        const auto with = make_settings(true);
        const auto without = make_settings(false);
        std::vector<std::uint8_t> bank;
        for (int round = 0; !done.load(); ++round)
        {
            char text[64];
            FakeHost::dispatch(effect, PluginOp::get_param_display, round % 6, 0, text);
            void* data = nullptr;
            const auto size = FakeHost::dispatch(effect, PluginOp::get_chunk, 0, 0, &data);
            bank.assign(static_cast<std::uint8_t*>(data), static_cast<std::uint8_t*>(data) + size);
            ASSERT_EQ(FakeHost::dispatch(effect, PluginOp::set_chunk, 0, size, bank.data()), 1);
            ASSERT_EQ(mgr.load_settings(multi(round % 2 == 0 ? with : without)), 0);
            basic::ConfKeyMulti saved("s");
            ASSERT_EQ(mgr.save_settings(saved), 0);
            main_rounds.store(round + 1);
        }
    });
    std::thread editor([&] {
        for (int round = 0; !done.load(); ++round)
        {
            const int index = round % 6;
            if (adapter().set_and_report_param(index, static_cast<float>(round % 101) / 100.0f, 200))
            {
                adapter().release(index, 200);
            }
            mgr.set_pending_learn(round % 1000 == 0 ? 5 : -1);
            editor_rounds.store(round + 1);
        }
    });

    MidiEventList list;
    for (int i = 0; i < 96; ++i)
    {
        list.add(i % 32, 0xB0 + i % 16, i % 3 == 0 ? 74 : i % 3 == 1 ? 99 : 6, 0);
    }
    lumo::vst2::Events* events = list.build();
    host.keep_midi = false;
    std::vector<float> l(32, 0.1f), r(32, -0.1f), ol(32), orr(32);
    // However the threads are scheduled, the audio keeps coming until the
    // others have been at work beside it for a while.
    for (int b = 0; b < 3000 || main_rounds.load() < 100 || editor_rounds.load() < 5000; ++b)
    {
        for (std::size_t i = 0; i < list.events.size(); ++i)
        {
            list.events[i].midi_data[2] = static_cast<char>((b + static_cast<int>(i)) % 128);
        }
        dispatch(PluginOp::process_events, 0, 0, events);
        process(l, r, ol, orr);
    }
    done.store(true);
    automation.join();
    main_thread.join();
    editor.join();
    EXPECT_TRUE(zq_test::all_clean(ol));
    // After the storm the output still works: a change goes out at the next block.
    ASSERT_EQ(mgr.load_settings(multi(make_settings(true))), 0);
    const int sent_before = host.sent_events;
    ASSERT_TRUE(adapter().set_and_report_param(4, 0.25f, 200));
    adapter().release(4, 200);
    process(l, r, ol, orr);
    EXPECT_GT(host.sent_events, sent_before);
}

}  // namespace
