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

// Values are strings with their zero below the user's "Software" key; values
// of other types, which the user may have put there, read as their text up to
// a zero.
TEST(PersistentKeyListWin32, ValuesAreStringsBelowTheUsersSoftwareKey)
{
    const std::string path = zq_test::ScratchKeys::make("Keys");
    PersistentKeyList key(path, true);
    ASSERT_EQ(key.set_string("LatestConfigAutoload", "1"), 0);
    HKEY raw = nullptr;
    const std::string registry_path = zq_test::ScratchKeyStore::to_registry_path(path);
    ASSERT_EQ(::RegOpenKeyExA(HKEY_CURRENT_USER, registry_path.c_str(), 0, KEY_READ | KEY_WRITE, &raw), ERROR_SUCCESS);
    DWORD type = 0;
    BYTE data[8] = {};
    DWORD size = sizeof(data);
    EXPECT_EQ(::RegQueryValueExA(raw, "LatestConfigAutoload", nullptr, &type, data, &size), ERROR_SUCCESS);
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(data), size), std::string("1\0", 2));

    const BYTE binary[] = {'a', 'b', 0, 'c'};
    ::RegSetValueExA(raw, "bin", 0, REG_BINARY, binary, sizeof(binary));
    ::RegSetValueExA(raw, "raw", 0, REG_BINARY, binary, 2);
    ::RegCloseKey(raw);
    std::string value;
    EXPECT_EQ(key.get_string("bin", value), 0);
    EXPECT_EQ(value, "ab");
    EXPECT_EQ(key.get_string("raw", value), 0);
    EXPECT_EQ(value, "ab");
}

}  // namespace
