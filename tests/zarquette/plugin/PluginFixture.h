#pragma once

#include "FakeHost.h"
#include "lumo/vst2/Vst2Plugin.h"

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
        effect = host.open_plugin();
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

    FakeHost host;
    lumo::vst2::AEffect* effect = nullptr;
};
