// The editor's thread drawing and handling input while the host automates
// every parameter from another thread and the audio thread renders: changes
// reach the controls only through the editor's inbox, so nothing here may
// race (run under ThreadSanitizer).
#include "zarquette/gui/ZarquetteGui.h"

#include "gadu/OffscreenWindow.h"
#include "tests/lumo/gui/FakeHostGui.h"
#include "zarquette/ZarquetteDsp.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

TEST(ZarquetteGuiStress, EditorAutomationAndAudioRunTogether)
{
    zarquette::ZarquetteDsp dsp;
    dsp.init();
    dsp.set_default_state();
    dsp.set_sample_freq(44100.0f);
    dsp.reset();
    gadu::OffscreenWindow window(100, 100);
    zarquette::ZarquetteGui gui;
    auto* host = new lumo_test::FakeHostGui();
    gui.set_host(host);
    gui.set_dsp(&dsp);
    gui.set_window(&window);
    gui.init();
    gui.set_default_state();
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
