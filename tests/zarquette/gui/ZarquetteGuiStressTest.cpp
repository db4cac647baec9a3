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
#include <functional>
#include <thread>
#include <vector>

namespace
{

using gadu::mouse_button::left;
using gadu::mouse_button::right;

// The editor's thread for 2000 timer ticks of 2 ms, with what the user does
// at a tick, while work runs on a thread of its own; each tick paints what
// changed.
void run_beside(zq_test::EditorRig& rig, const std::function<void()>& work, const std::function<void(int)>& user)
{
    ASSERT_EQ(rig.gui.open(nullptr), 0);
    std::atomic<bool> done{false};
    std::thread other([&] {
        while (!done.load(std::memory_order_relaxed))
        {
            work();
        }
    });
    for (int round = 0; round < 2000; ++round)
    {
        rig.window.set_time(0.002 * (round + 1));
        rig.window.run_timers(0.002);
        user(round);
        rig.window.paint();
    }
    done.store(true);
    other.join();
}

}  // namespace

// The host automates every parameter, the audio thread renders, and the user
// drags knob 1 and flips the switch now and then.
TEST(ZarquetteGuiStress, EditorAutomationAndAudioRunTogether)
{
    zq_test::EditorRig rig;
    std::atomic<bool> done{false};
    std::thread audio([&] {
        std::vector<float> in(256), out_l(256), out_r(256);
        const float* inputs[2] = {in.data(), in.data()};
        float* outputs[2] = {out_l.data(), out_r.data()};
        while (!done.load(std::memory_order_relaxed))
        {
            rig.dsp.process_replacing(outputs, inputs, 256, 0);
        }
    });
    int i = 0;
    const auto automate = [&] {
        const int index = i % 6;
        const float value = static_cast<float>(i % 101) / 100.0f;
        rig.dsp.use_param(index).set_norm_value(value);
        rig.gui.param_changed(index, value, 100);
        if (i++ % 97 == 0)
        {
            rig.gui.midi_learn_changed(index, i % 3 - 1);
        }
        std::this_thread::yield();
    };
    run_beside(rig, automate, [&](int round) {
        if (round % 50 == 0)
        {
            rig.window.press(294, 226, left);
            rig.window.move(294, 200);
            rig.window.release(294, 200, left);
            rig.window.press(350, 85, left);
            rig.window.release(350, 85, left);
        }
    });
    done.store(true);
    audio.join();
    rig.gui.use_inbox().take();
    rig.gui.close();
    for (int k = 0; k < 4; ++k)
    {
        const double shown = rig.gui.use_effect_part().use_knob(k).get_value();
        EXPECT_TRUE(shown >= 0.0 && shown <= 1.0) << k;
    }
}

// Learns complete on the audio thread (every controller event there runs the
// learn step) while the editor's thread arms and forgets them from the menu
// and polls the map at its timer.
TEST(ZarquetteGuiStress, MidiLearnCompletesOnTheAudioThreadWhileTheEditorPolls)
{
    lumo::MidiMgr mgr;
    zq_test::EditorRig rig;
    mgr.set_dsp(&rig.dsp);
    rig.host->midi_mgr = &mgr;
    int i = 0;
    const auto controllers = [&] {
        int index = -1;
        float value = 0.0f;
        mgr.map_controller((i % 8 + 1) << 16, i % 16384, index, value);
        ++i;
        std::this_thread::yield();
    };
    zarquette::MidiLearnMenu& menu = rig.gui.use_learn_menu();
    run_beside(rig, controllers, [&](int round) {
        if (round % 40 == 0)
        {
            const bool knob = round % 80 == 0;
            rig.window.press(knob ? 294 : 350, knob ? 226 : 85, right);
            rig.window.release(knob ? 294 : 350, knob ? 226 : 85, 0);
            const gadu::MenuItem& item = round % 120 == 0 ? menu.use_forget_item() : menu.use_learn_item();
            menu.use_root().find_item(item.get_id())->choose();
        }
    });
    mgr.set_pending_learn(-1);
    rig.window.set_time(4.02);
    rig.window.run_timers(0.02);
    EXPECT_EQ(rig.gui.use_effect_part().use_knob(0).get_learn_state(),
              mgr.get_id(1) >= 0 ? zarquette::MidiLearn::bound : zarquette::MidiLearn::unbound);
    EXPECT_EQ(rig.gui.use_effect_part().use_switch().get_learn_state(),
              mgr.get_id(3) >= 0 ? zarquette::MidiLearn::bound : zarquette::MidiLearn::unbound);
}
