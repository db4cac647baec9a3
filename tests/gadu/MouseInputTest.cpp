// The arithmetic of the pointer: platform mouse words, double clicks, the
// zoom between content and platform pixels (how windows use it is checked
// through the windows themselves), and the stored mouse setting.
#include "gadu/DoubleClickDetector.h"
#include "gadu/MouseCompatibility.h"
#include "gadu/MouseMessage.h"
#include "gadu/MouseWord.h"
#include "gadu/Zoom.h"
#include "sys/PersistentKeyList.h"

#include <gtest/gtest.h>

#include <string>

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

TEST(Zoom, PositionsGoToTheBlockThatHoldsThemEvenLeftOfTheWindow)
{
    const Zoom three(3);
    EXPECT_EQ(three.to_content(0), 0);
    EXPECT_EQ(three.to_content(2), 0);
    EXPECT_EQ(three.to_content(3), 1);
    EXPECT_EQ(three.to_content(-1), -1);
    EXPECT_EQ(three.to_content(-3), -1);
    EXPECT_EQ(three.to_content(-4), -2);
    EXPECT_EQ(three.to_platform(Rect{1, 2, 4, 6}), (Rect{3, 6, 12, 18}));
    // The content pixels whose blocks an odd platform rectangle touches.
    EXPECT_EQ(three.covering(Rect{4, 2, 7, 3}), (Rect{1, 0, 3, 1}));
    EXPECT_EQ(three.covering(Rect{-2, 0, 0, 3}), (Rect{-1, 0, 0, 1}));
    EXPECT_TRUE(three.covering(Rect{5, 5, 5, 9}).is_empty());
    // A factor that would divide by zero or mirror counts as 1.
    EXPECT_EQ(Zoom(0).get_factor(), 1);
    EXPECT_EQ(Zoom(-2).to_content(-7), -7);
}

TEST(DoubleClickDetector, OnlyAQuickCloseSecondPressOfTheSameButtonIsADoubleClick)
{
    DoubleClickDetector clicks;
    EXPECT_EQ(clicks.on_press(1, 10, 10, 1.0), 0);
    EXPECT_EQ(clicks.on_press(1, 12, 8, 1.5), 1);
    // The third press starts over.
    EXPECT_EQ(clicks.on_press(1, 12, 8, 1.6), 0);
    EXPECT_EQ(clicks.on_press(1, 15, 8, 1.7), 0);
    EXPECT_EQ(clicks.on_press(1, 15, 11, 1.8), 0);
    EXPECT_EQ(clicks.on_press(4, 15, 11, 1.9), 0);
    EXPECT_EQ(clicks.on_press(1, 15, 11, 2.0), 0);
    EXPECT_EQ(clicks.on_press(1, 15, 11, 2.501), 0);
}

std::string stored()
{
    sys::PersistentKeyList key(MouseCompatibility::kKeyPath, true);
    std::string text;
    key.get_string(MouseCompatibility::kValueName, text);
    return text;
}

void store_text(const std::string& text)
{
    sys::PersistentKeyList key(MouseCompatibility::kKeyPath, true);
    ASSERT_EQ(key.set_string(MouseCompatibility::kValueName, text), 0);
}

TEST(MouseCompatibility, ReadsAStoredModeAndRepairsAnythingElse)
{
    MouseCompatibility& setting = MouseCompatibility::use_instance();
    for (const auto& [text, mode] : {std::pair{"1", 1}, {"2", 0}, {"-1", 0}, {"yes", 0}, {"", 0}, {" 1", 0}, {"1x", 0}})
    {
        store_text(text);
        setting.load();
        EXPECT_EQ(setting.get_mode(), mode) << text;
        EXPECT_EQ(stored(), std::to_string(mode)) << text;
    }
}

TEST(MouseCompatibility, SettingTheModeWritesItAndRefusesOthers)
{
    MouseCompatibility& setting = MouseCompatibility::use_instance();
    EXPECT_EQ(setting.set_mode(1), 0);
    EXPECT_EQ(stored(), "1");
    EXPECT_EQ(setting.set_mode(7), -1);
    EXPECT_EQ(setting.get_mode(), 1);
    EXPECT_EQ(stored(), "1");
    EXPECT_EQ(setting.set_mode(0), 0);
    EXPECT_EQ(stored(), "0");
}

}  // namespace
}  // namespace gadu
