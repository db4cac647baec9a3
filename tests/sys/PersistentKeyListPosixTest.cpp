#include "sys/PersistentKeyList.h"
#include "tests/sys/ScratchKeyStorePosix.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>

namespace
{

using sys::PersistentKeyList;

zq_test::ScratchKeyStore* const store =
    static_cast<zq_test::ScratchKeyStore*>(::testing::AddGlobalTestEnvironment(new zq_test::ScratchKeyStore));

std::string read_file(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Restores an environment variable when the test ends.
class EnvRestore
{
public:
    explicit EnvRestore(const char* name) : _name(name)
    {
        const char* value = std::getenv(name);
        _had = value != nullptr;
        _value = _had ? value : "";
    }
    ~EnvRestore()
    {
        if (_had)
        {
            ::setenv(_name, _value.c_str(), 1);
        }
        else
        {
            ::unsetenv(_name);
        }
    }
    EnvRestore(const EnvRestore&) = delete;
    EnvRestore& operator=(const EnvRestore&) = delete;

private:
    const char* _name;
    bool _had;
    std::string _value;
};

// The key list's two failures have one type; only their texts tell a path
// that is not there from one that cannot be made.
void expect_path_error(const std::function<void()>& open, const std::string& sentence)
{
    try
    {
        open();
        ADD_FAILURE() << "no error";
    }
    catch (const std::runtime_error& e)
    {
        EXPECT_EQ(e.what(), "sys::PersistentKeyList::PersistentKeyList () : " + sentence);
    }
}

TEST(PersistentKeyListPosix, KeysAreFoldersAndValuesAreFilesBelowTheConfigurationFolder)
{
    PersistentKeyList key("Velnor/Zarquette VST2", true);
    ASSERT_EQ(key.set_string("NRPN Compatibility", "1"), 0);
    ASSERT_EQ(key.set_string("../escape", "no"), 0);
    const std::filesystem::path folder = std::filesystem::path(store->get_path()) / "Velnor" / "Zarquette VST2";
    EXPECT_EQ(read_file(folder / "NRPN Compatibility.value"), "1");
    EXPECT_EQ(read_file(folder / "%2E%2E%2Fescape.value"), "no");
    // Nothing but the two values: the temporary files of the writes are gone.
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator()), 2);
}

TEST(PersistentKeyListPosix, FilesLongerThanAValueDoNotRead)
{
    PersistentKeyList key("Velnor Tests/Long", true);
    std::ofstream(std::filesystem::path(store->get_path()) / "Velnor Tests" / "Long" / "big.value")
        << std::string(1024, 'z');
    std::string value = "stale";
    EXPECT_EQ(key.get_string("big", value), -1);
    EXPECT_EQ(value, "");
}

TEST(PersistentKeyListPosix, AValueEndsAtItsFirstZeroByte)
{
    PersistentKeyList key("Velnor Tests/Zero", true);
    std::ofstream(std::filesystem::path(store->get_path()) / "Velnor Tests" / "Zero" / "z.value")
        << std::string("ab\0cd", 5);
    std::string value;
    EXPECT_EQ(key.get_string("z", value), 0);
    EXPECT_EQ(value, "ab");
}

TEST(PersistentKeyListPosix, WithoutAConfigurationFolderTheHomeFolderServes)
{
    const EnvRestore xdg("XDG_CONFIG_HOME");
    const EnvRestore home("HOME");
    ::setenv("XDG_CONFIG_HOME", "relative/paths/do/not/count", 1);
    ::setenv("HOME", store->get_path().c_str(), 1);
    { PersistentKeyList key("Velnor Tests/Home", true); }
    const std::filesystem::path config = std::filesystem::path(store->get_path()) / ".config";
    EXPECT_TRUE(std::filesystem::is_directory(config / "Velnor Tests" / "Home"));

    ::unsetenv("XDG_CONFIG_HOME");
    ::unsetenv("HOME");
    expect_path_error([] { PersistentKeyList("Velnor Tests", false); }, "Cannot open path.");
}

TEST(PersistentKeyListPosix, AKeyOrValueBlockedByAnotherKindOfFileFails)
{
    PersistentKeyList parent("Velnor Tests/Blocked", true);
    const std::filesystem::path folder = std::filesystem::path(store->get_path()) / "Velnor Tests" / "Blocked";
    std::ofstream(folder / "Child") << "a file where a key should be";
    std::filesystem::create_directory(folder / "v.value");
    expect_path_error([] { PersistentKeyList("Velnor Tests/Blocked/Child", true); }, "Cannot create path.");
    EXPECT_EQ(parent.set_string("v", "x"), -1);
    std::string value = "stale";
    EXPECT_EQ(parent.get_string("v", value), -1);
    EXPECT_EQ(value, "");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator()), 2);
}

}  // namespace
