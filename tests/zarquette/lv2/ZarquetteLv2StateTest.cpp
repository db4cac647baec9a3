#include "Lv2Rig.h"

#include "lumo/ProgramSlot.h"
#include "lumo/lv2/Lv2StateKeys.h"
#include "lumo/midi/MidiMgr.h"
#include "sys/ClockPin.h"

#include <lv2/atom/atom.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using zq_test::Lv2Rig;
using zq_test::StateStore;

constexpr const char* uri = "urn:velnor:zarquette";

class ZarquetteLv2State : public ::testing::Test
{
protected:
    std::uint32_t key(const char* fragment) { return map.id(std::string(uri) + fragment); }
    std::uint32_t program_key() { return key(lumo::lv2_state_key::program); }
    std::uint32_t bindings_key() { return key(lumo::lv2_state_key::midi_bindings); }
    // Controller 20 at full scale, through the rig's input.
    static void move_cc20(Lv2Rig& rig) { rig.run(32, rig.input().cc(0, 20, 127)); }
    // A state saved from a rig whose Oignons learned controller 20.
    void save_learned(StateStore& state)
    {
        Lv2Rig rig(map);
        rig.control("bof") = 25.0f;
        rig.control("nuclear_power") = 1.0f;
        rig.run(32);
        rig.plugin().use_midi_mgr()->set_pending_learn(4);
        move_cc20(rig);
        saved = rig.params();
        ASSERT_EQ(rig.save(state), LV2_STATE_SUCCESS);
    }

    sys::ClockPin clock{100.0};
    zq_test::UridMap map;
    std::vector<float> saved;
};

TEST_F(ZarquetteLv2State, TheProgramAndTheLearnedControllersComeBack)
{
    StateStore state;
    save_learned(state);
    ASSERT_EQ(state.values.size(), 2u);
    const StateStore::Value& program = state.values[program_key()];
    EXPECT_EQ(program.type, map.id(LV2_ATOM__Chunk));
    // The record of a VST 2 program chunk.
    lumo::ProgramSlot slot;
    ASSERT_EQ(slot.read(program.bytes.data(), program.bytes.size()), 0);
    EXPECT_EQ(slot.get_name(), "Default");
    ASSERT_EQ(slot.get_nbr_values(), 6);
    for (int i = 0; i < 6; ++i)
    {
        EXPECT_EQ(slot.get_value(i), saved[static_cast<std::size_t>(i)]) << i;
    }

    // Name and tag come back as they were kept.
    std::vector<std::uint8_t>& bytes = state.values[program_key()].bytes;
    bytes[0] = 0x12;
    bytes[3] = 0x78;
    bytes[12] = 'M';
    Lv2Rig rig(map);
    rig.run(32);
    ASSERT_EQ(rig.restore(state), LV2_STATE_SUCCESS);
    EXPECT_EQ(rig.params(), saved);
    StateStore again;
    ASSERT_EQ(rig.save(again), LV2_STATE_SUCCESS);
    EXPECT_EQ(again.values[program_key()].bytes, bytes);
    // The learned controller drives Oignons again, and its NRPN no longer does.
    rig.control("oignons") = 10.0f;
    rig.run(32);
    EXPECT_EQ(rig.param(4), 0.1f);
    move_cc20(rig);
    EXPECT_FLOAT_EQ(rig.param(4), 16256.0f / 16383.0f);
    EXPECT_EQ(rig.plugin().use_midi_mgr()->find_param((99 << 16) + 4), -1);
    EXPECT_TRUE(rig.log.empty());
}

TEST_F(ZarquetteLv2State, AValueOfAnotherTypeSizeOrShapeChangesNothingAndIsReported)
{
    StateStore good;
    save_learned(good);
    const std::vector<std::uint8_t> program = good.values[program_key()].bytes;
    std::vector<std::uint8_t> seven = program;
    seven[7] = 7;  // value count 7: a program of another plug-in
    seven.insert(seven.end(), 4, 0);
    struct Case
    {
        const char* what;
        std::uint32_t key;
        StateStore::Value value;
    };
    const std::vector<Case> cases = {
        {"text", program_key(), {map.id(LV2_ATOM__String), program}},
        {"short", program_key(), {map.id(LV2_ATOM__Chunk), std::vector<std::uint8_t>(program.begin(), program.end() - 1)}},
        {"long", program_key(), {map.id(LV2_ATOM__Chunk), std::vector<std::uint8_t>(program.size() + 4, 0)}},
        {"foreign", program_key(), {map.id(LV2_ATOM__Chunk), seven}},
        {"bindings", bindings_key(), {map.id(LV2_ATOM__Chunk), {0, 0, 0, 9, 1}}},
    };
    for (const Case& c : cases)
    {
        StateStore bad = good;
        bad.values[c.key] = c.value;
        Lv2Rig rig(map);
        rig.run(32);
        const std::vector<float> before = rig.params();
        EXPECT_NE(rig.restore(bad), LV2_STATE_SUCCESS) << c.what;
        EXPECT_EQ(rig.params(), before) << c.what;
        EXPECT_EQ(rig.plugin().use_midi_mgr()->find_param(20 << 16), -1) << c.what;
        EXPECT_NE(rig.log.find("refused"), std::string::npos) << c.what;
    }
    // A store without the plug-in's keys restores nothing and is no error.
    StateStore empty;
    Lv2Rig rig(map);
    EXPECT_EQ(rig.restore(empty), LV2_STATE_SUCCESS);
    // Without the host's map there are no keys to save under.
    Lv2Rig bare(map, 44100.0, true);
    EXPECT_EQ(bare.save(empty), LV2_STATE_ERR_NO_FEATURE);
    EXPECT_EQ(bare.restore(good), LV2_STATE_ERR_NO_FEATURE);
}

}  // namespace
