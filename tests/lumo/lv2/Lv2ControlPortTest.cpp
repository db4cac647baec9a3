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
    EXPECT_EQ(lumo::Lv2ControlPort::make_symbol("2nd Gain"), "_2nd_gain");
    EXPECT_EQ(lumo::Lv2ControlPort::make_symbol("%"), "_");
}

}  // namespace
