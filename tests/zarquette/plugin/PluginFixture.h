#pragma once

#include "FakeHost.h"
#include "lumo/vst2/Vst2WinPlugin.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// A loaded plug-in in a fake host, closed at the end of the test.
class PluginFixture : public ::testing::Test
{
protected:
    void SetUp() override { open(); }
    void TearDown() override { close(); }

    void open()
    {
        effect = recipe != nullptr ? host.open_plugin(*recipe) : host.open_plugin();
        ASSERT_NE(effect, nullptr);
    }

    void close()
    {
        if (effect != nullptr)
        {
            FakeHost::close_plugin(effect);
            effect = nullptr;
        }
    }

    std::intptr_t dispatch(lumo::vst2::PluginOp op, std::int32_t index = 0, std::intptr_t value = 0,
                           void* ptr = nullptr, float opt = 0.0f)
    {
        return FakeHost::dispatch(effect, op, index, value, ptr, opt);
    }

    std::string text_of(lumo::vst2::PluginOp op, std::int32_t index = 0)
    {
        char buf[256] = {};
        dispatch(op, index, 0, buf);
        return buf;
    }

    // The adapter behind the host's record, reached from inside.
    lumo::Vst2WinPlugin& adapter() const { return FakeHost::adapter_of(effect); }

    void resume(float rate = 44100.0f, int block = 512)
    {
        dispatch(lumo::vst2::PluginOp::set_sample_rate, 0, 0, nullptr, rate);
        dispatch(lumo::vst2::PluginOp::set_block_size, 0, block);
        dispatch(lumo::vst2::PluginOp::mains_changed, 0, 1);
    }

    // Processes one block of the given input through processReplacing.
    void process(std::vector<float>& left, std::vector<float>& right, std::vector<float>& out_l,
                 std::vector<float>& out_r)
    {
        float* in[2] = {left.data(), right.data()};
        float* out[2] = {out_l.data(), out_r.data()};
        effect->process_replacing(effect, in, out, static_cast<std::int32_t>(left.size()));
    }
    // One block of 64 frames of silence, into buffers made beforehand (the
    // block may be counted for allocations); what comes out must be clean.
    void block()
    {
        process(silence, silence, out_l, out_r);
        EXPECT_TRUE(zq_test::all_clean(out_l) && zq_test::all_clean(out_r));
    }

    FakeHost host;
    // The plug-in's own unless a test builds it another way.
    const lumo::Vst2PluginRecipe* recipe = nullptr;
    lumo::vst2::AEffect* effect = nullptr;
    std::vector<float> silence = std::vector<float>(64), out_l = silence, out_r = silence;
};
