#include "lumo/lv2/Lv2ControlPort.h"

#include <gtest/gtest.h>

namespace
{

// Hosts keep a port by its symbol in their sessions: the rule must not move.
TEST(Lv2ControlPort, SymbolsAreLowerCaseWithOneUnderscorePerGap)
{
    EXPECT_EQ(lumo::Lv2ControlPort::make_symbol("Nuclear Power"), "nuclear_power");
    EXPECT_EQ(lumo::Lv2ControlPort::make_symbol("  Vin  Rouge (%) "), "vin_rouge");
    EXPECT_EQ(lumo::Lv2ControlPort::make_symbol("Left input"), "left_input");
    EXPECT_EQ(lumo::Lv2ControlPort::make_symbol("Zany A9-z0"), "zany_a9_z0");
    EXPECT_EQ(lumo::Lv2ControlPort::make_symbol("0 dB"), "_0_db");
    EXPECT_EQ(lumo::Lv2ControlPort::make_symbol("9 Lives"), "_9_lives");
    EXPECT_EQ(lumo::Lv2ControlPort::make_symbol("%"), "_");
}

}  // namespace
