#include "tools/vsthost/PluginFinder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace
{

namespace fs = std::filesystem;
using vsthost::FoundPlugin;
using vsthost::PluginFinder;

class PluginFinderTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fs::remove_all(_root);
        for (const char* file : {"b.so", "A.SO", "notes.txt", "deeper/c.so", "deeper/c.so.bak", "deeper/further/d.so"})
        {
            fs::create_directories((_root / file).parent_path());
            std::ofstream(_root / file) << "x";
        }
        fs::create_directories(_root / "empty.so");
    }
    void TearDown() override { fs::remove_all(_root); }

    const fs::path _root = fs::path("plugin-finder-test");
};

TEST_F(PluginFinderTest, FindsPluginFilesInEveryFolderBelowInNameOrder)
{
    const std::vector<FoundPlugin> found = PluginFinder::find({_root.string()}, ".so");
    std::vector<std::string> names;
    for (const FoundPlugin& f : found)
    {
        EXPECT_FALSE(f.named);
        names.push_back(fs::path(f.path).lexically_relative(_root).generic_string());
    }
    EXPECT_EQ(names, (std::vector<std::string>{"A.SO", "b.so", "deeper/c.so", "deeper/further/d.so"}));
}

TEST_F(PluginFinderTest, KeepsNamedFilesAsTheyAreEvenWhenMissing)
{
    const std::string named = (_root / "notes.txt").string();
    const std::vector<FoundPlugin> found = PluginFinder::find({named, "missing.so", (_root / "deeper").string()}, ".so");
    ASSERT_EQ(found.size(), 4u);
    EXPECT_EQ(found[0].path, named);
    EXPECT_TRUE(found[0].named);
    EXPECT_EQ(found[1].path, "missing.so");
    EXPECT_TRUE(found[1].named);
    EXPECT_FALSE(found[2].named);
}

}  // namespace
