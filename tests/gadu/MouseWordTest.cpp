#include "gadu/MouseMessage.h"
#include "gadu/MouseWord.h"

#include <gtest/gtest.h>

namespace gadu
{
namespace
{

TEST(MouseWordTest, ButtonsAndModifiersMoveToTheToolkitsBits)
{
    // Platform bits: 1 left, 2 right, 4 shift, 8 ctrl, 16 middle.
    EXPECT_EQ(mouse_word::get_buttons(0x01u), mouse_button::left);
    EXPECT_EQ(mouse_word::get_buttons(0x02u), mouse_button::right);
    EXPECT_EQ(mouse_word::get_buttons(0x10u), mouse_button::middle);
    EXPECT_EQ(mouse_word::get_buttons(0x1Fu), 7);
    EXPECT_EQ(mouse_word::get_buttons(0x0Cu), 0);
    EXPECT_EQ(mouse_word::get_modifiers(0x08u), modifier_key::ctrl);
    EXPECT_EQ(mouse_word::get_modifiers(0x04u), modifier_key::shift);
    EXPECT_EQ(mouse_word::get_modifiers(0x1Fu), 3);
    EXPECT_EQ(mouse_word::get_modifiers(0x13u), 0);
}

TEST(MouseWordTest, PositionsAreSignedHalvesAndANotchIsOne)
{
    // A window beside the screen's left edge reports negative positions.
    EXPECT_EQ(mouse_word::get_x(0x0010FFF6u), -10);
    EXPECT_EQ(mouse_word::get_y(0x0010FFF6u), 16);
    EXPECT_EQ(mouse_word::get_y(0x80000000u), -32768);
    EXPECT_FLOAT_EQ(mouse_word::get_wheel_delta(120u << 16), 1.0f);
    EXPECT_FLOAT_EQ(mouse_word::get_wheel_delta(static_cast<std::uint32_t>(-240) << 16 | 0x8u), -2.0f);
}

}  // namespace
}  // namespace gadu
