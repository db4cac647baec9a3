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
    PersistentKeyList key(root + "/Zarquette", true);
    EXPECT_EQ(key.set_string("LatestConfigFile", "C:\\configs\\my file.cfg"), 0);
    EXPECT_EQ(key.set_string("Empty", ""), 0);
    EXPECT_EQ(key.set_string("Odd name/with\\separators ..", "odd \x01\xff bytes\n"), 0);

    const PersistentKeyList again(root + "/Zarquette", false);
    std::string value = "stale";
    EXPECT_EQ(again.get_string("LatestConfigFile", value), 0);
    EXPECT_EQ(value, "C:\\configs\\my file.cfg");
    EXPECT_EQ(again.get_string("Empty", value), 0);
    EXPECT_EQ(value, "");
    EXPECT_EQ(again.get_string("Odd name/with\\separators ..", value), 0);
    EXPECT_EQ(value, "odd \x01\xff bytes\n");

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

TEST_F(PersistentKeyListTest, EmptyPathComponentsAreSkipped)
{
    {
        PersistentKeyList key(root + "/a/b", true);
        key.set_string("where", "a/b");
    }
    for (const std::string& path : {root + "/a/b/", "/" + root + "//a//b", root + "/a/b///"})
    {
        const PersistentKeyList key(path, false);
        std::string value;
        EXPECT_EQ(key.get_string("where", value), 0) << path;
        EXPECT_EQ(value, "a/b") << path;
    }
}

TEST_F(PersistentKeyListTest, OpeningAMissingPathFailsAndCreatingItMakesIt)
{
    EXPECT_THROW(PersistentKeyList(root + "/Missing/Key", false), std::runtime_error);
    { PersistentKeyList created(root + "/Missing/Key", true); }
    EXPECT_NO_THROW(PersistentKeyList(root + "/Missing/Key", false));
    EXPECT_NO_THROW(PersistentKeyList("", false));
}

TEST_F(PersistentKeyListTest, KeysAreSeparateFromValuesOfTheSameName)
{
    PersistentKeyList parent(root, true);
    parent.set_string("child", "a value");
    PersistentKeyList child(root + "/child", true);
    child.set_string("inner", "1");
    std::string value;
    EXPECT_EQ(parent.get_string("child", value), 0);
    EXPECT_EQ(value, "a value");
}

}  // namespace
