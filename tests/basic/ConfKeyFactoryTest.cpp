#include "basic/ConfKeyFactory.h"
#include "basic/ConfKeyInterface.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace
{

using basic::ConfKeyFactory;
using basic::ConfKeyInterface;

struct ReadResult
{
    std::unique_ptr<ConfKeyInterface> key;
    int error;
};

ReadResult read(const std::string& text)
{
    ConfKeyFactory& factory = ConfKeyFactory::use_instance();
    auto key = factory.create_key(text);
    return ReadResult{std::move(key), factory.get_last_error()};
}

std::string write(const ConfKeyInterface& key)
{
    std::string text;
    int level = 0;
    EXPECT_EQ(key.do_write_to_string(text, level), 0);
    return text;
}

// "0\n1\n..." up to count - 1, each line indented.
std::string lines(int count, int indent)
{
    std::string text;
    for (int i = 0; i < count; ++i)
    {
        text += std::string(static_cast<std::size_t>(indent), ' ') + std::to_string(i) + "\n";
    }
    return text;
}

// What a text reads as: the error (the codes the file format documents, so
// written as numbers), and the key written back (empty: no key). The reads
// share one factory: each starts afresh after the one before. That what the
// writer writes reads back to the same tree is the fuzz target's promise.
TEST(ConfKeyFactory, TextsReadToTheirKeyOrCodeAndWriteBack)
{
    const std::string deep = "a = " + std::string(200, '{') + std::string(200, '}');
    const std::string too_deep = "a = " + std::string(201, '{') + std::string(201, '}');
    const struct
    {
        std::string text;
        int error;
        std::string written;
    } cases[] = {
        {"a = b", 0, "a = b"},
        {"a = b c", -1015, "a = b"},  // left-over tokens
        // Lists of up to seven elements stay on the line; longer ones take a
        // line per element, one level deeper than their key.
        {"x = { 0 1 2 3 4 5 6 }", 0, "x = { 0 1 2 3 4 5 6 }"},
        {"s = { x = { 0 1 2 3 4 5 6 7 } }", 0, "s =\n{\n   x = {\n" + lines(8, 6) + "   }\n}"},
        {"n = { 0 1 2 3 4 5 6 { 0 1 2 3 4 5 6 7 } }", 0, "n = {\n" + lines(7, 3) + "   {\n" + lines(8, 6) + "   }\n}"},
        {"name = { }", 0, "name = { }"},
        {"name = { a = 1 }", 0, "name =\n{\n   a = 1\n}"},
        {"l = { = { = } x }", 0, "l = { = { = } x }"},  // "=" is an ordinary element in lists
        // Quotes group words and end a word they touch; outside quotes a
        // carriage return vanishes without splitting the word it stands in;
        // backspace and vertical tab separate, form feed does not.
        {"l = { \"abc\"def \"\" \"x // y\" \"{=}\" }", 0, "l = { abc def  \"x // y\" {=} }"},
        {"l = {a\rb\r \rc\r\n\"d\re\"f{\"\"}g\r}\r\n", 0, "l = { ab c d\re f {  } g }"},
        {"l = {\b1\v2\f3 }", 0, "l = { 1 2\f3 }"},
        // Words are quoted where the reader would split them, and only there.
        {"a = \"two words\"", 0, "a = \"two words\""},
        {"k = \"a\tb\"", 0, "k = \"a\tb\""},
        {"k = \"a,b\"", 0, "k = \"a,b\""},
        {"\"two words\" = v", 0, "\"two words\" = v"},
        {"k = \"\"", 0, "k = "},
        {"x = 1 // note", 0, "x = 1"},
        {"x = 1 //", 0, "x = 1"},
        {deep, 0, ""},
        // Sections keep their children in file order. Comments go, and so do
        // carriage returns, except inside quotes.
        {"root = { k = 1 k = 2 sub = { deep = { 1 2 } } list = { a { b c } } }", 0,
         "root =\n{\n   k = 1\n   k = 2\n   sub =\n   {\n      deep = { 1 2 }\n   }\n"
         "   list = { a { b c } }\n}"},
        {"// header\r\nroot =\r\n{\r\n   a = 1\t// one\r\n   b = \"x\ry\"\r\n}\r\n", 0,
         "root =\n{\n   a = 1\n   b = x\ry\n}"},
        // Texts without tokens give no key and no error.
        {"", 0, ""},
        {"  \n\t\n", 0, ""},
        {"// only a comment\n   // and another", 0, ""},
        {"\r\n\r\n", 0, ""},
        // Texts that do not begin with a key.
        {"a", -1015, ""},
        {"a =", -1015, ""},
        {"a b c", -1015, ""},
        {"= = x", -1015, ""},
        {"a = =", -1015, ""},
        {"{ } = x", -1015, ""},
        // Every tokenizing failure answers -1020, nesting too deep included.
        {"a = {", -1020, ""},
        {"a = }", -1020, ""},
        {"a = \"b", -1020, ""},
        {"a = \"b\nc\" = d", -1020, ""},
        {"a = { } }", -1020, ""},
        {"} a = { {", -1020, ""},
        {too_deep, -1020, ""},
        {"a = { x", -1020, ""},
        {"a = { 1 { 2 }", -1020, ""},
        {"a = { } { x", -1020, ""},
        {"a = { { }", -1020, ""},
        {"s = { a = { 1 \"}\" ", -1020, ""},
        // Structure errors come back with the key formed so far. Quoted braces
        // are words to the tokenizer but braces to the reader: the counts
        // balance, the structure does not.
        {"a = { \"{\" }", -1017, "a = "},
        {"l = { 1 \"{\" }", -1017, "l = "},
        {"l = { 1 2 \"{\" }", -1017, "l = "},
        {"v = \"{\"", -1018, "v = "},
        {"s = { a = 1 b }", -1019, "s =\n{\n   a = 1\n}"},
        {"s = { a = 1 b = }", -1019, "s =\n{\n   a = 1\n}"},
        {"s = { a = 1 x y z w }", -1019, "s =\n{\n   a = 1\n}"},
        {"s = { a = \"{\" }", -1019, "s =\n{\n   a = { }\n}"},
        {"s = { a = 1 b = \"{\" }", -1019, "s =\n{\n   a = 1\n   b = { }\n}"},
    };
    for (const auto& c : cases)
    {
        const ReadResult r = read(c.text);
        EXPECT_EQ(r.error, c.error) << c.text;
        if (c.written.empty())
        {
            EXPECT_TRUE(r.key == nullptr || c.text == deep) << c.text;
        }
        else
        {
            ASSERT_NE(r.key, nullptr) << c.text;
            EXPECT_EQ(write(*r.key), c.written) << c.text;
        }
    }
}

TEST(ConfKeyFactory, KeyNamesWithPathSeparatorsThrowOutOfTheReader)
{
    for (const char* text : {"a/b = 1", "s = { ok = 1 bad\\name = 2 }"})
    {
        EXPECT_THROW(ConfKeyFactory::use_instance().create_key(text), std::runtime_error) << text;
    }
}

}  // namespace
