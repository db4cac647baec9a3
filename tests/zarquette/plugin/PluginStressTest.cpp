#include "PluginFixture.h"

#include <atomic>
#include <cmath>
#include <chrono>
#include <thread>
#include <vector>

namespace
{

using lumo::vst2::PluginOp;

// The host's three kinds of threads at once: automation, audio, and a main
// thread that reads displays and swaps chunks.
TEST_F(PluginFixture, AutomationAudioAndChunksFromThreeThreads)
{
    resume();
    std::atomic<bool> done{false};

    std::thread automation([&] {
        for (int round = 0; round < 300; ++round)
        {
            for (int i = 0; i < 6; ++i)
            {
                effect->set_parameter(effect, i, static_cast<float>((round * 7 + i) % 100) / 100.0f);
                (void)effect->get_parameter(effect, i);
            }
        }
    });

    std::thread main_thread([&] {
        std::vector<std::uint8_t> bank;
        while (!done.load())
        {
            char text[64];
            for (int i = 0; i < 6; ++i)
            {
                FakeHost::dispatch(effect, PluginOp::get_param_display, i, 0, text);
            }
            void* data = nullptr;
            const auto size = FakeHost::dispatch(effect, PluginOp::get_chunk, 0, 0, &data);
            ASSERT_EQ(size, 108);
            bank.assign(static_cast<std::uint8_t*>(data), static_cast<std::uint8_t*>(data) + size);
            ASSERT_EQ(FakeHost::dispatch(effect, PluginOp::set_chunk, 0, size, bank.data()), 1);
        }
    });

    std::vector<float> l(32, 0.1f), r(32, -0.1f), ol(32), orr(32);
    for (int b = 0; b < 2000; ++b)
    {
        process(l, r, ol, orr);
    }
    automation.join();
    done.store(true);
    main_thread.join();
    for (float x : ol)
    {
        EXPECT_TRUE(std::isfinite(x));
    }
}

// Changes from inside the plug-in open a host edit gesture; the background
// thread closes it once the parameter's hold time has run out.
TEST_F(PluginFixture, BackgroundThreadClosesGesturesAfterTheHoldTime)
{
    // A change reported from inside the plug-in, as the editor would make it.
    auto* adapter = static_cast<lumo::PluginCmdInterface*>(
        static_cast<lumo::Vst2Plugin*>(lumo::AudioEffect::from_aeffect(effect)));
    ASSERT_TRUE(adapter->take(4, 200));
    ASSERT_TRUE(adapter->set_and_report_param(4, 0.5f, 200));
    EXPECT_EQ(host.last_begin_edit.load(), 4);
    EXPECT_EQ(host.last_automated_index.load(), 4);

    // Held at 200: the gesture stays open for now.
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    EXPECT_EQ(host.last_end_edit.load(), -1);

    // Released: closed within a few rounds of the 50 ms background thread.
    adapter->release(4, 200);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (host.last_end_edit.load() != 4 && std::chrono::steady_clock::now() < deadline)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_EQ(host.last_end_edit.load(), 4);
    EXPECT_EQ(host.count(lumo::vst2::HostOp::begin_edit), 1);
    EXPECT_EQ(host.count(lumo::vst2::HostOp::end_edit), 1);
}

}  // namespace
