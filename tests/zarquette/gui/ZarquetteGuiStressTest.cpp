// The editor's thread drawing and handling input while the host automates
// every parameter from another thread and the audio thread renders: changes
// reach the controls only through the editor's inbox, so nothing here may
// race (run under ThreadSanitizer).
#include "zarquette/gui/ZarquetteGui.h"

#include "gadu/MenuItem.h"
#include "gadu/OffscreenWindow.h"
#include "lumo/midi/MidiMgr.h"
#include "tests/zarquette/gui/EditorRig.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

TEST(ZarquetteGuiStress, EditorAutomationAndAudioRunTogether)
{
    zq_test::EditorRig rig;
    zarquette::ZarquetteDsp& dsp = rig.dsp;
    zarquette::ZarquetteGui& gui = rig.gui;
    gadu::OffscreenWindow& window = rig.window;
    ASSERT_EQ(gui.open(nullptr), 0);

    std::atomic<bool> done{false};
    std::thread automation([&] {
        for (int i = 0; !done.load(std::memory_order_relaxed); ++i)
        {
            const int index = i % 6;
            const float value = static_cast<float>(i % 101) / 100.0f;
            dsp.use_param(index).set_norm_value(value);
            gui.param_changed(index, value, 100);
            if (i % 97 == 0)
            {
                gui.midi_learn_changed(index, i % 3 - 1);
            }
            std::this_thread::yield();
        }
    });
    std::thread audio([&] {
        std::vector<float> in_l(256), in_r(256), out_l(256), out_r(256);
        const float* inputs[2] = {in_l.data(), in_r.data()};
        float* outputs[2] = {out_l.data(), out_r.data()};
        while (!done.load(std::memory_order_relaxed))
        {
            dsp.process_replacing(outputs, inputs, 256, 0);
        }
    });

    // The editor's thread: timer ticks take the inbox, the user drags knob 1
    // and flips the switch now and then, and what changed is painted.
    double now = 0.0;
    for (int round = 0; round < 2000; ++round)
    {
        now += 0.002;
        window.set_time(now);
        window.run_timers(0.002);
        if (round % 50 == 0)
        {
            window.press(294, 226, gadu::mouse_button::left);
            window.move(294, 200);
            window.release(294, 200, gadu::mouse_button::left);
            window.press(350, 85, gadu::mouse_button::left);
            window.release(350, 85, gadu::mouse_button::left);
        }
        window.paint();
    }
    done.store(true);
    automation.join();
    audio.join();
    gui.use_inbox().take();
    gui.close();
    for (int k = 0; k < 4; ++k)
    {
        const double shown = gui.use_effect_part().use_knob(k).get_value();
        EXPECT_GE(shown, 0.0);
        EXPECT_LE(shown, 1.0);
    }
}

// Learns complete on the audio thread (every controller event there runs the
// learn step) while the editor's thread arms and forgets them from the menu
// and polls the map at its timer: the two meet only in the manager's atomic
// words.
TEST(ZarquetteGuiStress, MidiLearnCompletesOnTheAudioThreadWhileTheEditorPolls)
{
    lumo::MidiMgr mgr;
    zq_test::EditorRig rig;
    mgr.set_dsp(&rig.dsp);
    rig.host->midi_mgr = &mgr;
    ASSERT_EQ(rig.gui.open(nullptr), 0);

    std::atomic<bool> done{false};
    std::thread audio([&] {
        for (int i = 0; !done.load(std::memory_order_relaxed); ++i)
        {
            int index = -1;
            float value = 0.0f;
            mgr.map_controller((i % 8 + 1) << 16, i % 16384, index, value);
            std::this_thread::yield();
        }
    });

    zarquette::MidiLearnMenu& menu = rig.gui.use_learn_menu();
    double now = 0.0;
    for (int round = 0; round < 2000; ++round)
    {
        now += 0.002;
        rig.window.set_time(now);
        rig.window.run_timers(0.002);
        if (round % 40 == 0)
        {
            const bool knob = round % 80 == 0;
            rig.window.press(knob ? 294 : 350, knob ? 226 : 85, gadu::mouse_button::right);
            rig.window.release(knob ? 294 : 350, knob ? 226 : 85, 0);
            const gadu::MenuItem& item = round % 120 == 0 ? menu.use_forget_item() : menu.use_learn_item();
            menu.use_root().find_item(item.get_id())->choose();
        }
        rig.window.paint();
    }
    done.store(true);
    audio.join();

    mgr.set_pending_learn(-1);
    rig.window.set_time(now + 0.02);
    rig.window.run_timers(0.02);
    EXPECT_EQ(rig.gui.use_effect_part().use_knob(0).get_learn_state(),
              mgr.get_id(1) >= 0 ? zarquette::MidiLearn::bound : zarquette::MidiLearn::unbound);
    EXPECT_EQ(rig.gui.use_effect_part().use_switch().get_learn_state(),
              mgr.get_id(3) >= 0 ? zarquette::MidiLearn::bound : zarquette::MidiLearn::unbound);
}
