#include "gadu/MouseCompatibility.h"
#include "sys/PersistentKeyList.h"

#include <gtest/gtest.h>

#include <string>

namespace gadu
{
namespace
{

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
