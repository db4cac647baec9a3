#include "lumo/ParamReorder.h"

#include "basic/ConfKeyFactory.h"
#include "basic/ConfKeyMulti.h"
#include "tests/lumo/SettingDspMixinStub.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace
{

using lumo::ParamReorder;

class ParamReorderTest : public ::testing::Test
{
protected:
    void SetUp() override { reorder.setup(dsp); }

    // Loads a configuration text whose top section holds the given members.
    int load(const std::string& members)
    {
        basic::ConfKeyFactory factory;
        const auto key = factory.create_key("root = { version = 1 " + members + " }");
        EXPECT_EQ(factory.get_last_error(), 0) << members;
        return reorder.load_settings(dynamic_cast<const basic::ConfKeyMulti&>(*key));
    }

    // The map's key as the file holds it.
    std::string saved()
    {
        basic::ConfKeyMulti root("root");
        EXPECT_EQ(reorder.save_settings(root), 0);
        std::string text;
        int level = 0;
        root.use_key(0).do_write_to_string(text, level);
        return text;
    }

    std::vector<int> host_order() const
    {
        std::vector<int> order;
        for (int h = 0; h < 6; ++h)
        {
            order.push_back(reorder.get_internal_index(h));
            EXPECT_EQ(reorder.get_host_index(order.back()), h);
        }
        return order;
    }

    zq_test::SettingDspStub dsp;
    ParamReorder reorder;
};

// The loads follow each other on one map: each load of a map starts from
// scratch, a load without one keeps the order there is.
TEST_F(ParamReorderTest, EachMapGivesItsOrder)
{
    const std::pair<std::string, std::vector<int>> cases[] = {
        {"other = { 5 4 3 }", {0, 1, 2, 3, 4, 5}},
        {"parameter_reorder_map = 5_Tempo", {0, 1, 2, 3, 4, 5}},  // not a list
        {"parameter_reorder_map = { 5_Vin_Rouge 4 \" 3\" +2_x 1 0 9 9 }", {5, 4, 3, 2, 1, 0}},
        {"parameter_reorder_map = { 1 }", {1, 0, 2, 3, 4, 5}},
        // Gaps are filled first by their own index, then in order.
        {"parameter_reorder_map = { 5_x 0_y }", {5, 0, 2, 3, 4, 1}},
        // Repeated, bad and out-of-range elements are skipped.
        {"parameter_reorder_map = { 3_a 3_b }", {3, 1, 2, 0, 4, 5}},
        {"parameter_reorder_map = { x_Tempo 9_Tempo -1 { 2 } 99999999999999999999 1 }", {0, 5, 2, 3, 4, 1}},
    };
    for (const auto& [members, order] : cases)
    {
        EXPECT_EQ(load(members), 0);
        EXPECT_EQ(host_order(), order) << members;
    }
    // Indexes outside the parameters map to themselves.
    for (const int i : {-1, 6, 1000})
    {
        EXPECT_EQ(reorder.get_host_index(i), i);
        EXPECT_EQ(reorder.get_internal_index(i), i);
    }
}

// The saved map reads back to the same order; long names are cut to the
// element's capacity.
TEST_F(ParamReorderTest, SavesOneNamedElementPerHostIndex)
{
    EXPECT_EQ(saved(), "parameter_reorder_map = { 0_Tempo 1_Bof 2_Gauloises 3_Nuclear_Power 4_Oignons 5_Vin_Rouge }");
    load("parameter_reorder_map = { 2 0 1 }");
    const std::string map = saved();
    load("parameter_reorder_map = { 5 }");
    load(map);
    EXPECT_EQ(host_order(), (std::vector<int>{2, 0, 1, 3, 4, 5}));

    dsp.params[4] = std::make_unique<zq_test::NamedParam>(std::string(400, 'n'));
    EXPECT_NE(saved().find(" 4_" + std::string(253, 'n') + " "), std::string::npos);
}

}  // namespace
