// The editor's thread drawing and handling input while other threads change
// what it shows: changes reach the controls only through the editor's inbox,
// and learns only through the MIDI manager's atomic words, so nothing here
// may race (run under ThreadSanitizer).
#include "zarquette/gui/ZarquetteGui.h"

#include "gadu/MenuItem.h"
#include "gadu/OffscreenWindow.h"
#include "lumo/midi/MidiMgr.h"
#include "tests/zarquette/gui/EditorRig.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

// The host automates every parameter and the audio thread renders; learns
// complete on the audio thread (every controller event there runs the learn
// step). Meanwhile the user drags knob 1, flips the switch, and arms and
// forgets learns from the menu, and the editor polls the map at its timer.
TEST(ZarquetteGuiStress, EditorAutomationLearnAndAudioRunTogether)
{
    lumo::MidiMgr mgr;
    zq_test::EditorRig rig;
    mgr.set_dsp(&rig.dsp);
    rig.host->midi_mgr = &mgr;
    ASSERT_EQ(rig.gui.open(nullptr), 0);
    std::atomic<bool> done{false};
    std::thread audio([&] {
        std::vector<float> in(256), out_l(256), out_r(256);
        const float* inputs[2] = {in.data(), in.data()};
        float* outputs[2] = {out_l.data(), out_r.data()};
        for (int i = 0; !done.load(std::memory_order_relaxed); ++i)
        {
            rig.dsp.process_replacing(outputs, inputs, 256, 0);
            int index = -1;
            float value = 0.0f;
            mgr.map_controller((i % 8 + 1) << 16, i % 16384, index, value);
        }
    });
    // The host's automation on a thread of its own.
    std::thread automation([&] {
        for (int i = 0; !done.load(std::memory_order_relaxed); ++i)
        {
            const int index = i % 6;
            const float value = static_cast<float>(i % 101) / 100.0f;
            rig.dsp.use_param(index).set_norm_value(value);
            rig.gui.param_changed(index, value, 100);
            std::this_thread::yield();
        }
    });
    // The editor's thread: 2000 timer ticks of 2 ms, each painting what changed.
    using gadu::mouse_button::left;
    using gadu::mouse_button::right;
    zarquette::MidiLearnMenu& menu = rig.gui.use_learn_menu();
    for (int round = 0; round < 2000; ++round)
    {
        rig.window.set_time(0.002 * (round + 1));
        rig.window.run_timers(0.002);
        const bool knob = round % 80 == 0;
        if (round % 50 == 0)
        {
            rig.window.press(294, 226, left);
            rig.window.move(294, 200);
            rig.window.release(294, 200, left);
            rig.window.press(350, 85, left);
            rig.window.release(350, 85, left);
        }
        else if (round % 40 == 0)
        {
            rig.window.press(knob ? 294 : 350, knob ? 226 : 85, right);
            rig.window.release(knob ? 294 : 350, knob ? 226 : 85, 0);
            const gadu::MenuItem& item = round % 120 == 0 ? menu.use_forget_item() : menu.use_learn_item();
            menu.use_root().find_item(item.get_id())->choose();
        }
        rig.window.paint();
    }
    done.store(true);
    audio.join();
    automation.join();
    mgr.set_pending_learn(-1);
    rig.window.set_time(4.02);
    rig.window.run_timers(0.02);
    rig.gui.close();
    EXPECT_EQ(rig.gui.use_effect_part().use_knob(0).get_learn_state(),
              mgr.get_id(1) >= 0 ? zarquette::MidiLearn::bound : zarquette::MidiLearn::unbound);
    EXPECT_EQ(rig.gui.use_effect_part().use_switch().get_learn_state(),
              mgr.get_id(3) >= 0 ? zarquette::MidiLearn::bound : zarquette::MidiLearn::unbound);
}
