#include "sys/PersistentKeyList.h"
#include "tests/sys/ScratchKeys.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace
{

using sys::PersistentKeyList;

// Every test works below a key of its own, so runs never see each other's values.
class PersistentKeyListTest : public ::testing::Test
{
protected:
    const std::string root = zq_test::ScratchKeys::make("Keys");
};

TEST_F(PersistentKeyListTest, ValuesReadBackUnchanged)
{
    const std::pair<std::string, std::string> values[] = {{"LatestConfigFile", "C:\\configs\\my file.cfg"},
                                                          {"Empty", ""},
                                                          {"Odd name/with\\separators ..", "odd \x01\xff bytes\n"}};
    PersistentKeyList key(root + "/Zarquette", true);
    for (const auto& [name, text] : values)
    {
        EXPECT_EQ(key.set_string(name, text), 0);
    }
    const PersistentKeyList again(root + "/Zarquette", false);
    std::string value = "stale";
    for (const auto& [name, text] : values)
    {
        EXPECT_EQ(again.get_string(name, value), 0);
        EXPECT_EQ(value, text);
    }
    EXPECT_EQ(key.set_string("LatestConfigFile", "second"), 0);
    EXPECT_EQ(again.get_string("LatestConfigFile", value), 0);
    EXPECT_EQ(value, "second");
    // A missing value reads as empty, with an error.
    EXPECT_EQ(again.get_string("Never Written", value), -1);
    EXPECT_EQ(value, "");
}

TEST_F(PersistentKeyListTest, ValuesUpTo1023BytesWithoutZerosAreStored)
{
    PersistentKeyList key(root, true);
    const std::string longest(1023, 'x');
    EXPECT_EQ(key.set_string("v", longest), 0);
    EXPECT_EQ(key.set_string("v", std::string(1024, 'y')), -1);
    EXPECT_EQ(key.set_string("v", std::string("a\0b", 3)), -1);
    std::string value;
    EXPECT_EQ(key.get_string("v", value), 0);
    EXPECT_EQ(value, longest);
}

// A missing path fails to open until it is created; empty components are
// skipped; a key is separate from a value of the same name.
TEST_F(PersistentKeyListTest, PathsOpenWhatWasCreated)
{
    EXPECT_THROW(PersistentKeyList(root + "/a/b", false), std::runtime_error);
    {
        PersistentKeyList key(root + "/a/b", true);
        key.set_string("where", "a/b");
        PersistentKeyList(root + "/a", false).set_string("b", "a value");
    }
    EXPECT_NO_THROW(PersistentKeyList("", false));
    for (const std::string& path : {root + "/a/b/", "/" + root + "//a//b", root + "/a/b///"})
    {
        const PersistentKeyList key(path, false);
        std::string value;
        EXPECT_EQ(key.get_string("where", value), 0) << path;
        EXPECT_EQ(value, "a/b") << path;
    }
    std::string value;
    EXPECT_EQ(PersistentKeyList(root + "/a", false).get_string("b", value), 0);
    EXPECT_EQ(value, "a value");
}

}  // namespace
