#include "sys/PersistentKeyList.h"
#include "tests/sys/ScratchKeyStorePosix.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace
{

using sys::PersistentKeyList;

zq_test::ScratchKeyStore* const store =
    static_cast<zq_test::ScratchKeyStore*>(::testing::AddGlobalTestEnvironment(new zq_test::ScratchKeyStore));

std::filesystem::path folder_of(const std::string& key)
{
    return std::filesystem::path(store->get_path()) / key;
}

std::string read_file(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

TEST(PersistentKeyListPosix, KeysAreFoldersAndValuesAreFilesBelowTheConfigurationFolder)
{
    PersistentKeyList key("Velnor/Zarquette VST2", true);
    ASSERT_EQ(key.set_string("NRPN Compatibility", "1"), 0);
    ASSERT_EQ(key.set_string("../escape", "no"), 0);
    const std::filesystem::path folder = folder_of("Velnor/Zarquette VST2");
    EXPECT_EQ(read_file(folder / "NRPN Compatibility.value"), "1");
    EXPECT_EQ(read_file(folder / "%2E%2E%2Fescape.value"), "no");
    // Nothing but the two values: the temporary files of the writes are gone.
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator()), 2);
}

// Files written by hand: one longer than any value does not read, and a
// value ends at its first zero byte.
TEST(PersistentKeyListPosix, ValueFilesReadUpToTheirLimitAndFirstZero)
{
    PersistentKeyList key("Velnor Tests/Files", true);
    std::ofstream(folder_of("Velnor Tests/Files") / "big.value") << std::string(1024, 'z');
    std::ofstream(folder_of("Velnor Tests/Files") / "z.value") << std::string("ab\0cd", 5);
    std::string value = "stale";
    EXPECT_EQ(key.get_string("big", value), -1);
    EXPECT_EQ(value, "");
    EXPECT_EQ(key.get_string("z", value), 0);
    EXPECT_EQ(value, "ab");
}

TEST(PersistentKeyListPosix, WithoutAConfigurationFolderTheHomeFolderServes)
{
    const std::string home = std::getenv("HOME") != nullptr ? std::getenv("HOME") : "";
    ::setenv("XDG_CONFIG_HOME", "relative/paths/do/not/count", 1);
    ::setenv("HOME", store->get_path().c_str(), 1);
    { PersistentKeyList key("Velnor Tests/Home", true); }
    EXPECT_TRUE(std::filesystem::is_directory(folder_of(".config/Velnor Tests/Home")));
    ::unsetenv("HOME");
    EXPECT_THROW(PersistentKeyList("Velnor Tests", false), std::runtime_error);
    ::setenv("HOME", home.c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", store->get_path().c_str(), 1);
}

TEST(PersistentKeyListPosix, AKeyOrValueBlockedByAnotherKindOfFileFails)
{
    PersistentKeyList parent("Velnor Tests/Blocked", true);
    const std::filesystem::path folder = folder_of("Velnor Tests/Blocked");
    std::ofstream(folder / "Child") << "a file where a key should be";
    std::filesystem::create_directory(folder / "v.value");
    EXPECT_THROW(PersistentKeyList("Velnor Tests/Blocked/Child", true), std::runtime_error);
    EXPECT_EQ(parent.set_string("v", "x"), -1);
    std::string value = "stale";
    EXPECT_EQ(parent.get_string("v", value), -1);
    EXPECT_EQ(value, "");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator()), 2);
}

}  // namespace
