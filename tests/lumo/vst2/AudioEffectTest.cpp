#include "lumo/vst2/AudioEffectX.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace
{

using lumo::vst2::PluginOp;

int deleted = 0;

// An effect whose every entry throws: the host must see neutral answers only.
class ThrowingEffect : public lumo::AudioEffectX
{
public:
    ThrowingEffect() : AudioEffectX(nullptr, 1, 2) {}
    ~ThrowingEffect() override { ++deleted; }
    float get_parameter(int) override { throw std::runtime_error("get"); }
    void set_parameter(int, float) override { throw std::runtime_error("set"); }
    void process_replacing(float**, float**, int) override { throw std::runtime_error("process"); }
    int get_vendor_version() override { throw std::bad_alloc(); }
};

TEST(AudioEffect, NoExceptionCrossesTheHostBoundary)
{
    auto* effect = new ThrowingEffect();
    lumo::vst2::AEffect* e = effect->use_aeffect();
    EXPECT_EQ(e->get_parameter(e, 0), 0.0f);
    e->set_parameter(e, 0, 0.5f);
    e->process_replacing(e, nullptr, nullptr, 16);
    EXPECT_EQ(e->dispatcher(e, static_cast<std::int32_t>(PluginOp::get_vendor_version), 0, 0, nullptr, 0.0f), 0);

    deleted = 0;
    e->dispatcher(e, static_cast<std::int32_t>(PluginOp::close), 0, 0, nullptr, 0.0f);  // deletes the plug-in
    EXPECT_EQ(deleted, 1);
}

}  // namespace
