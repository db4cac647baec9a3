#include "sys/PersistentKeyList.h"
#include "tests/basic/ScratchDir.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <string>

namespace
{

using sys::PersistentKeyList;

TEST(PersistentKeyListWin32, ValuesAreStringsWithTheirZeroBelowTheUsersSoftwareKey)
{
    const std::string leaf = "Keys " + zq_test::ScratchDir::make_unique_suffix();
    {
        PersistentKeyList key("Velnor Tests/" + leaf, true);
        ASSERT_EQ(key.set_string("LatestConfigAutoload", "1"), 0);
    }
    HKEY raw = nullptr;
    ASSERT_EQ(::RegOpenKeyExA(HKEY_CURRENT_USER, ("Software\\Velnor Tests\\" + leaf).c_str(), 0, KEY_READ, &raw),
              ERROR_SUCCESS);
    DWORD type = 0;
    BYTE data[8] = {};
    DWORD size = sizeof(data);
    EXPECT_EQ(::RegQueryValueExA(raw, "LatestConfigAutoload", nullptr, &type, data, &size), ERROR_SUCCESS);
    ::RegCloseKey(raw);
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(size, 2u);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(data), 2), std::string("1\0", 2));
}

TEST(PersistentKeyListWin32, ValuesOfOtherTypesReadAsTheirTextUpToAZero)
{
    const std::string leaf = "Types " + zq_test::ScratchDir::make_unique_suffix();
    PersistentKeyList key("Velnor Tests/" + leaf, true);
    HKEY raw = nullptr;
    ASSERT_EQ(::RegOpenKeyExA(HKEY_CURRENT_USER, ("Software\\Velnor Tests\\" + leaf).c_str(), 0, KEY_WRITE, &raw),
              ERROR_SUCCESS);
    const BYTE binary[] = {'a', 'b', 0, 'c'};
    ::RegSetValueExA(raw, "bin", 0, REG_BINARY, binary, sizeof(binary));
    const BYTE unterminated[] = {'x', 'y'};
    ::RegSetValueExA(raw, "raw", 0, REG_BINARY, unterminated, sizeof(unterminated));
    ::RegCloseKey(raw);
    std::string value;
    EXPECT_EQ(key.get_string("bin", value), 0);
    EXPECT_EQ(value, "ab");
    EXPECT_EQ(key.get_string("raw", value), 0);
    EXPECT_EQ(value, "xy");
}

}  // namespace
