#include "sys/Resource.h"

#include <gtest/gtest.h>

#include <cstring>

namespace
{

// The test program links the effect's recordings, so these run against the
// platform's real lookup: the resource section on Windows, the registered
// table elsewhere.

TEST(Resource, FindsAnEmbeddedRecordingWhateverTheCase)
{
    std::size_t size = 0;
    const std::uint8_t* lower = sys::get_resource("WAVE", "cat-meow", &size);
    ASSERT_NE(lower, nullptr);
    const std::size_t found = size;
    EXPECT_GT(found, 44u);
    EXPECT_EQ(std::memcmp(lower, "RIFF", 4), 0);

    EXPECT_EQ(sys::get_resource("WAVE", "CAT-MEOW"), lower);
    EXPECT_EQ(sys::get_resource("wave", "Cat-Meow"), lower);
    EXPECT_EQ(sys::get_resource("WAVE", "siamese"), sys::get_resource("WAVE", "Siamese"));
    EXPECT_NE(sys::get_resource("WAVE", "meow2"), sys::get_resource("WAVE", "meow2-2"));

    // Missing names and types give null and leave the size alone.
    EXPECT_EQ(sys::get_resource("WAVE", "no such cat", &size), nullptr);
    EXPECT_EQ(sys::get_resource("APIC", "meow", &size), nullptr);
    EXPECT_EQ(sys::get_resource("WAVE", "meo", &size), nullptr);
    EXPECT_EQ(sys::get_resource("WAVE", "meoww", &size), nullptr);
    EXPECT_EQ(sys::get_resource(nullptr, "meow", &size), nullptr);
    EXPECT_EQ(sys::get_resource("WAVE", nullptr, &size), nullptr);
    EXPECT_EQ(size, found);
}

}  // namespace
