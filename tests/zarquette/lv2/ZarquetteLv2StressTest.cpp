#include "Lv2Rig.h"

#include "lumo/midi/MidiMgr.h"

#include <lv2/atom/atom.h>
#include <lv2/midi/midi.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <thread>

namespace
{

// A host may save the plug-in's state while the audio thread runs it: blocks
// with MIDI that moves parameters and a learn that rebinds a controller, and
// the host's thread saving over and over.
TEST(ZarquetteLv2Stress, SavingWhileBlocksRun)
{
    zq_test::UridMap map;
    zq_test::Lv2Rig rig(map);
    const std::uint32_t midi = map.id(LV2_MIDI__MidiEvent);
    zq_test::SequenceBytes events(map.id(LV2_ATOM__Sequence));
    for (int f = 0; f < 64; f += 8)
    {
        events.event(f, midi, {0xB0, 99, 0}).event(f, midi, {0xB0, 98, 2});
        events.event(f, midi, {0xB0, 6, static_cast<std::uint8_t>(f)}).event(f, midi, {0xB0, 20, 64});
    }
    rig.send(events);
    std::fill(rig.in_l.begin(), rig.in_l.end(), 0.25f);
    std::atomic<bool> done{false};
    std::thread host([&] {
        while (!done.load())
        {
            zq_test::StateStore state;
            ASSERT_EQ(rig.save(state), LV2_STATE_SUCCESS);
            ASSERT_EQ(state.values.size(), 2u);
        }
    });
    for (int b = 0; b < 3000; ++b)
    {
        if (b % 100 == 0)
        {
            rig.plugin().use_midi_mgr()->set_pending_learn(b % 600 / 100);
        }
        rig.control("bof") = static_cast<float>(b % 100);
        rig.run(64);
    }
    done.store(true);
    host.join();
    for (const float x : rig.out_l)
    {
        EXPECT_TRUE(std::isfinite(x));
    }
}

}  // namespace
