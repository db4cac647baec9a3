#include "tools/vsthost/ArgumentQuote.h"

#include <gtest/gtest.h>

namespace
{

using vsthost::quote_argument;

// The forms Windows' C runtime reads back as the word itself.
TEST(ArgumentQuote, WordsComeBackAsTheyWereWhateverTheyHold)
{
    EXPECT_EQ(quote_argument("plain.dll"), "plain.dll");
    EXPECT_EQ(quote_argument(""), "\"\"");
    EXPECT_EQ(quote_argument(R"(C:\Program Files\My Plug-ins\x.dll)"), R"("C:\Program Files\My Plug-ins\x.dll")");
    EXPECT_EQ(quote_argument(R"(say "hi")"), R"("say \"hi\"")");
    // Backslashes double only before a quote, the closing one included.
    EXPECT_EQ(quote_argument(R"(C:\a dir\)"), R"("C:\a dir\\")");
    EXPECT_EQ(quote_argument(R"(a\"b c)"), R"("a\\\"b c")");
    EXPECT_EQ(quote_argument(R"(no\space\)"), R"(no\space\)");
}

}  // namespace
