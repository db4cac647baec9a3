#include "tests/lumo/SettingDspMixinStub.h"
#include "tests/lumo/midi/MidiRecorder.h"

#include "basic/ConfKeyFactory.h"
#include "basic/ConfKeyMulti.h"
#include "lumo/midi/MidiMgr.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

namespace
{

using Strings = std::vector<std::string>;

class MidiMgrTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        mgr.set_dsp(&dsp);
        mgr.set_output(&out);
        out.connect(nullptr, &mgr, nullptr);
    }
    // The parameter a controller drives, and the value it gets.
    std::pair<int, float> map(std::int32_t id, std::int32_t value14)
    {
        std::pair<int, float> mapped{0, 0.0f};
        mgr.map_controller(id, value14, mapped.first, mapped.second);
        return mapped;
    }
    int index_of(std::int32_t id) { return map(id, 0).first; }
    std::string saved()
    {
        basic::ConfKeyMulti root("root");
        EXPECT_EQ(mgr.save_settings(root), 0);
        std::string text;
        int level = 0;
        root.use_key(0).do_write_to_string(text, level);
        return text;
    }
    void load(const std::string& text)
    {
        basic::ConfKeyFactory& factory = basic::ConfKeyFactory::use_instance();
        const std::unique_ptr<basic::ConfKeyInterface> key = factory.create_key("root = { " + text + " }");
        ASSERT_TRUE(key && factory.get_last_error() == 0) << text;
        ASSERT_EQ(mgr.load_settings(dynamic_cast<const basic::ConfKeyMulti&>(*key)), 0);
    }

    zq_test::SettingDspStub dsp;
    zq_test::TestMidiOut out;
    lumo::MidiMgr mgr;
};

TEST_F(MidiMgrTest, BindingKeepsOneControllerPerParameterAndOneParameterPerController)
{
    mgr.bind_all_to_nrpn();
    EXPECT_EQ(mgr.get_id(5), 99 * 65536 + 5);
    mgr.bind(0, 7, 0);
    mgr.bind(3, 7, 99);  // the number only counts for RPN and NRPN
    EXPECT_EQ(mgr.get_id(0), -1);
    EXPECT_EQ(index_of(7 * 65536), 3);
    mgr.bind(3, 1, 0);
    EXPECT_EQ(index_of(7 * 65536), -1);
    EXPECT_EQ(index_of(99 * 65536 + 3), -1);
    EXPECT_EQ(mgr.unbind(3), 0);
    EXPECT_EQ(index_of(1 * 65536), -1);
    // Numbers MIDI cannot carry, and indexes beyond the table, bind nothing.
    EXPECT_EQ(mgr.bind(2, 101, 16384), -1);
    EXPECT_EQ(mgr.bind(lumo::MidiControlMap::capacity, 7, 0), -1);
    EXPECT_EQ(mgr.get_id(2), 99 * 65536 + 2);
    // Values scale by 1 / 16383.
    mgr.bind(0, 7, 0);
    mgr.bind(1, 99, 1);
    EXPECT_EQ(index_of(7 * 65536), 0);
    EXPECT_FLOAT_EQ(map(7 * 65536, 64 << 7).second, 8192.0f / 16383.0f);
    EXPECT_FLOAT_EQ(map(7 * 65536, 127 << 7).second, 16256.0f / 16383.0f);
    EXPECT_EQ(map(99 * 65536 + 1, 16383), (std::pair{1, 1.0f}));
    EXPECT_EQ(map(8 * 65536, 5), (std::pair{-1, -1.0f}));
}

TEST_F(MidiMgrTest, ArmedLearnBindsTheNextControllerAndDrivesItAtOnce)
{
    mgr.bind_all_to_nrpn();
    mgr.set_pending_learn(4);
    EXPECT_EQ(map(74 * 65536, 16383), (std::pair{4, 1.0f}));
    EXPECT_EQ(mgr.get_last_learnt_param(), 4);
    EXPECT_EQ(mgr.get_last_learnt_id(), 74 * 65536);
    // Autobind (the default) stays armed: the next controller takes over.
    EXPECT_EQ(index_of(75 * 65536), 4);
    EXPECT_EQ(index_of(74 * 65536), 4);  // still armed: 74 is learnt again
    mgr.set_pending_learn(-1);
    EXPECT_EQ(index_of(75 * 65536), -1);
    EXPECT_EQ(mgr.get_id(4), 74 * 65536);
}

TEST_F(MidiMgrTest, EchoSendsEachKindOfControllerWithItsBytes)
{
    mgr.bind(0, 101, 300);
    mgr.bind(1, 0, 0);  // controller 0 is a controller too
    mgr.bind(2, 74, 0);
    mgr.bind(3, 99, 3);
    EXPECT_EQ(mgr.send_param(0, 0, 1.0f), 0);
    EXPECT_EQ(mgr.send_param(0, 1, 0.5f), 0);
    EXPECT_EQ(mgr.send_param(0, 2, 1.0f), 0);
    EXPECT_EQ(mgr.send_param(0, 2, 0.5f), 0);
    EXPECT_EQ(mgr.send_param(1, 3, 0.0f), 0);
    EXPECT_EQ(out.packets, (Strings{"B0 65 02 00", "B0 64 2C 00", "B0 06 7F 00", "B0 26 7F 00",  // RPN 300
                                    "B0 00 40 00", "B0 20 00 00", "B0 4A 7F 00", "B0 4A 40 00",
                                    "B1 63 00 00", "B1 62 03 00", "B1 06 00 00", "B1 26 00 00"}));
    EXPECT_EQ(mgr.send_param(0, 4, 1.0f), -2);
    EXPECT_EQ(mgr.send_param(0, 2, std::nanf("")), -1);
    out.room = 1;  // the high half is taken, the low half not
    EXPECT_EQ(mgr.send_param(0, 1, 0.0f), -1);
    mgr.set_output(nullptr);
    EXPECT_EQ(mgr.send_param(0, 2, 1.0f), -1);
}

TEST_F(MidiMgrTest, SavedMapListsParametersInOrderWithTheirNames)
{
    mgr.bind(1, 99, 1);
    mgr.bind(0, 7, 0);
    mgr.bind(9, 101, 5);
    EXPECT_EQ(saved(), "midi =\n"
                       "{\n"
                       "   // Bind param with cc_, rpn_ or nrpn_ as prefix + CC/(N)RPN #.\n"
                       "   control_map =\n"
                       "   {\n"
                       "      id_0 = cc_7\t// Tempo\n"
                       "      id_1 = nrpn_1\t// Bof\n"
                       "      id_9 = rpn_5\n"
                       "   }\n"
                       "}");
}

TEST_F(MidiMgrTest, LoadingMergesValidEntriesAndSkipsTheRest)
{
    mgr.bind_all_to_nrpn();
    load("midi = { control_map = { id_2 = CC_11  ID_4 = nrpn_40 id_x = cc_12 id_3 = pb_1 id_5 = cc_ "
         "id_-1 = cc_13 id_1 = rpn_99999 id_0 = { a = 1 } } }");
    EXPECT_EQ(mgr.get_id(2), 11 * 65536);
    EXPECT_EQ(mgr.get_id(4), 99 * 65536 + 40);
    for (int i : {0, 1, 3, 5})
    {
        EXPECT_EQ(mgr.get_id(i), 99 * 65536 + i) << i;
    }
    EXPECT_EQ(index_of(12 * 65536), -1);
    EXPECT_EQ(index_of(13 * 65536), -1);
    load("other = { }");
    EXPECT_EQ(mgr.get_id(2), 11 * 65536);
}

}  // namespace
