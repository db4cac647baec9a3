#include "lumo/TextCopy.h"

#include <gtest/gtest.h>

#include <cstring>

namespace
{

TEST(TextCopy, KeepsCapacityMinusOneCharactersAndTerminates)
{
    char buf[8];
    std::memset(buf, 'x', sizeof(buf));
    lumo::copy_text(buf, 5, "Gauloises");
    EXPECT_STREQ(buf, "Gaul");
    EXPECT_EQ(buf[5], 'x');  // nothing written past the capacity

    lumo::copy_text(buf, 8, "Bof");
    EXPECT_STREQ(buf, "Bof");
    lumo::copy_text(buf, 1, "Bof");
    EXPECT_STREQ(buf, "");
    lumo::copy_text(buf, 8, nullptr);
    EXPECT_STREQ(buf, "");
    // No capacity writes nothing.
    buf[0] = 'a';
    lumo::copy_text(buf, 0, "zz");
    lumo::copy_text(buf, -4, "zz");
    lumo::copy_text(nullptr, 4, "zz");
    EXPECT_EQ(buf[0], 'a');
}

}  // namespace
