#include "sys/PersistentKeyList.h"
#include "tests/sys/ScratchKeyStoreWin32.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <string>

namespace
{

using sys::PersistentKeyList;

// Every key the tests of this program create goes when the program ends.
::testing::Environment* const store = ::testing::AddGlobalTestEnvironment(new zq_test::ScratchKeyStore);

TEST(PersistentKeyListWin32, ValuesAreStringsWithTheirZeroBelowTheUsersSoftwareKey)
{
    const std::string path = zq_test::ScratchKeys::make("Keys");
    {
        PersistentKeyList key(path, true);
        ASSERT_EQ(key.set_string("LatestConfigAutoload", "1"), 0);
    }
    HKEY raw = nullptr;
    const std::string registry_path = zq_test::ScratchKeyStore::to_registry_path(path);
    ASSERT_EQ(::RegOpenKeyExA(HKEY_CURRENT_USER, registry_path.c_str(), 0, KEY_READ, &raw), ERROR_SUCCESS);
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
    const std::string path = zq_test::ScratchKeys::make("Types");
    PersistentKeyList key(path, true);
    HKEY raw = nullptr;
    const std::string registry_path = zq_test::ScratchKeyStore::to_registry_path(path);
    ASSERT_EQ(::RegOpenKeyExA(HKEY_CURRENT_USER, registry_path.c_str(), 0, KEY_WRITE, &raw), ERROR_SUCCESS);
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
