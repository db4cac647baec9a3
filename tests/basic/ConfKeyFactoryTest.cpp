#include "basic/ConfKeyContentMulti.h"
#include "basic/ConfKeyContentString.h"
#include "basic/ConfKeyData.h"
#include "basic/ConfKeyFactory.h"
#include "basic/ConfKeyMulti.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <stdexcept>
#include <string>

namespace
{

using basic::ConfKeyContentInterface;
using basic::ConfKeyContentMulti;
using basic::ConfKeyContentString;
using basic::ConfKeyData;
using basic::ConfKeyFactory;
using basic::ConfKeyInterface;
using basic::ConfKeyMulti;

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

const ConfKeyContentInterface& content_of(const ConfKeyInterface& key)
{
    return dynamic_cast<const ConfKeyData&>(key).use_content();
}

std::string string_of(const ConfKeyContentInterface& content)
{
    return dynamic_cast<const ConfKeyContentString&>(content).get_string();
}

void expect_no_key(std::initializer_list<const char*> texts, int error)
{
    for (const char* text : texts)
    {
        const ReadResult r = read(text);
        EXPECT_EQ(r.key, nullptr) << text;
        EXPECT_EQ(r.error, error) << text;
    }
}

TEST(ConfKeyFactory, ReadsALeafAndReportsLeftOverTokens)
{
    ReadResult r = read("a = b");
    ASSERT_NE(r.key, nullptr);
    EXPECT_EQ(r.error, 0);
    EXPECT_EQ(r.key->get_name(), "a");
    EXPECT_EQ(string_of(content_of(*r.key)), "b");

    r = read("a = b c");
    ASSERT_NE(r.key, nullptr);
    EXPECT_EQ(r.error, ConfKeyFactory::err_no_key);
    EXPECT_EQ(string_of(content_of(*r.key)), "b");
}

TEST(ConfKeyFactory, TextsWithoutTokensGiveNoKeyAndNoError)
{
    expect_no_key({"", "  \n\t\n", "// only a comment\n   // and another", "\r\n\r\n"}, 0);
}

TEST(ConfKeyFactory, TextsThatDoNotBeginWithAKeyAreRefused)
{
    expect_no_key({"a", "a =", "a b c", "= = x", "a = =", "{ } = x"}, ConfKeyFactory::err_no_key);
}

TEST(ConfKeyFactory, BracesDecideBetweenListsAndSections)
{
    ReadResult r = read("x = { 1 2 3 }");
    ASSERT_EQ(r.error, 0);
    const auto& list = dynamic_cast<const ConfKeyContentMulti&>(content_of(*r.key));
    ASSERT_EQ(list.get_nbr_elt(), 3);
    EXPECT_EQ(string_of(list.use_elt(2)), "3");
    EXPECT_EQ(write(*r.key), "x = { 1 2 3 }");

    r = read("name = { }");
    ASSERT_EQ(r.error, 0);
    EXPECT_EQ(dynamic_cast<const ConfKeyContentMulti&>(content_of(*r.key)).get_nbr_elt(), 0);

    r = read("name = { a = 1 }");
    ASSERT_EQ(r.error, 0);
    const auto& section = dynamic_cast<const ConfKeyMulti&>(*r.key);
    EXPECT_EQ(section.get_string("a"), "1");

    r = read("l = { = { = } x }");  // "=" is an ordinary element inside lists
    ASSERT_EQ(r.error, 0);
    EXPECT_EQ(write(*r.key), "l = { = { = } x }");
}

TEST(ConfKeyFactory, SectionsKeepTheirChildrenInFileOrder)
{
    const ReadResult r = read("root = { k = 1 k = 2 sub = { deep = { 1 2 } } list = { a { b c } } }");
    ASSERT_EQ(r.error, 0);
    const auto& root = dynamic_cast<const ConfKeyMulti&>(*r.key);
    ASSERT_EQ(root.get_nbr_keys(), 4);
    EXPECT_EQ(root.find_key_data("k", 0), 0);
    EXPECT_EQ(root.find_key_data("k", 1), 1);
    EXPECT_EQ(string_of(content_of(root.use_key(1))), "2");
    EXPECT_NE(root.use_key_from_path("sub/deep"), nullptr);
    EXPECT_EQ(root.find_key_multi("sub"), 2);
}

TEST(ConfKeyFactory, QuotesGroupWordsOnOneLine)
{
    ReadResult r = read("a = \"two words\"");
    ASSERT_EQ(r.error, 0);
    EXPECT_EQ(string_of(content_of(*r.key)), "two words");
    EXPECT_EQ(write(*r.key), "a = \"two words\"");

    r = read("l = { \"abc\"def \"\" \"x // y\" \"{=}\" }");
    ASSERT_EQ(r.error, 0);
    const auto& list = dynamic_cast<const ConfKeyContentMulti&>(content_of(*r.key));
    ASSERT_EQ(list.get_nbr_elt(), 5);
    EXPECT_EQ(string_of(list.use_elt(0)), "abc");
    EXPECT_EQ(string_of(list.use_elt(1)), "def");
    EXPECT_EQ(string_of(list.use_elt(2)), "");
    EXPECT_EQ(string_of(list.use_elt(3)), "x // y");
    EXPECT_EQ(string_of(list.use_elt(4)), "{=}");
}

TEST(ConfKeyFactory, CommentsAndCarriageReturnsAreDropped)
{
    ReadResult r = read("x = 1 // note");
    ASSERT_EQ(r.error, 0);
    EXPECT_EQ(string_of(content_of(*r.key)), "1");

    r = read("// header\r\nroot =\r\n{\r\n   a = 1\t// one\r\n   b = \"x\ry\"\r\n}\r\n");
    ASSERT_EQ(r.error, 0);
    const auto& root = dynamic_cast<const ConfKeyMulti&>(*r.key);
    EXPECT_EQ(root.get_string("a"), "1");
    EXPECT_EQ(root.get_string("b"), "x\ry");  // kept inside quotes
    EXPECT_EQ(root.get_comment(), "");
}

// Outside quotes a carriage return vanishes without splitting the word it
// stands in, and words stay whole however they touch quotes and braces.
TEST(ConfKeyFactory, CarriageReturnsInsideWordsJoinTheirParts)
{
    const ReadResult r = read("l = {a\rb\r \rc\r\n\"d\re\"f{\"\"}g\r}\r\n");
    ASSERT_EQ(r.error, 0);
    const auto& list = dynamic_cast<const ConfKeyContentMulti&>(content_of(*r.key));
    ASSERT_EQ(list.get_nbr_elt(), 6);
    EXPECT_EQ(string_of(list.use_elt(0)), "ab");
    EXPECT_EQ(string_of(list.use_elt(1)), "c");
    EXPECT_EQ(string_of(list.use_elt(2)), "d\re");
    EXPECT_EQ(string_of(list.use_elt(3)), "f");
    const auto& nested = dynamic_cast<const ConfKeyContentMulti&>(list.use_elt(4));
    ASSERT_EQ(nested.get_nbr_elt(), 1);
    EXPECT_EQ(string_of(nested.use_elt(0)), "");
    EXPECT_EQ(string_of(list.use_elt(5)), "g");
}

TEST(ConfKeyFactory, SeparatorsIncludeBackspaceAndVerticalTabButNotFormFeed)
{
    const ReadResult r = read("l = {\b1\v2\f3 }");
    ASSERT_EQ(r.error, 0);
    const auto& list = dynamic_cast<const ConfKeyContentMulti&>(content_of(*r.key));
    ASSERT_EQ(list.get_nbr_elt(), 2);
    EXPECT_EQ(string_of(list.use_elt(1)), "2\f3");
}

TEST(ConfKeyFactory, TokenizingFailuresAllAnswerMinus1020)
{
    expect_no_key({"a = {", "a = }", "a = \"b", "a = \"b\nc\" = d", "a = { } }", "} a = { {"}, ConfKeyFactory::err_tokens);
}

TEST(ConfKeyFactory, NestingBeyondTheLimitIsRefused)
{
    const std::string deep_ok = "a = " + std::string(200, '{') + std::string(200, '}');
    EXPECT_EQ(read(deep_ok).error, 0);
    const std::string too_deep = "a = " + std::string(201, '{') + std::string(201, '}');
    EXPECT_EQ(read(too_deep).error, ConfKeyFactory::err_tokens);
}

TEST(ConfKeyFactory, StructureErrorsKeepTheKeyFormedSoFar)
{
    struct Case
    {
        const char* text;
        int error;
    };
    const Case cases[] = {
        {"a = { x", ConfKeyFactory::err_tokens},
        {"a = { 1 { 2 }", ConfKeyFactory::err_tokens},
        {"a = { } { x", ConfKeyFactory::err_tokens},
        {"a = { { }", ConfKeyFactory::err_tokens},
        // Quoted braces are words to the tokenizer but braces to the reader:
        // the counts balance, the structure does not.
        {"a = { \"{\" }", ConfKeyFactory::err_bad_list},
        {"l = { 1 \"{\" }", ConfKeyFactory::err_bad_list},
        {"l = { 1 2 \"{\" }", ConfKeyFactory::err_bad_list},
        {"v = \"{\"", ConfKeyFactory::err_missing_value},
        {"s = { a = 1 b }", ConfKeyFactory::err_bad_section},
        {"s = { a = 1 b = }", ConfKeyFactory::err_bad_section},
        {"s = { a = 1 x y z w }", ConfKeyFactory::err_bad_section},
        {"s = { a = \"{\" }", ConfKeyFactory::err_bad_section},
        {"s = { a = 1 b = \"{\" }", ConfKeyFactory::err_bad_section},
        {"s = { a = { 1 \"}\" ", ConfKeyFactory::err_tokens},
    };
    for (const Case& c : cases)
    {
        const ReadResult r = read(c.text);
        EXPECT_EQ(r.error, c.error) << c.text;
    }
}

TEST(ConfKeyFactory, EachStructureErrorHasItsOwnCode)
{
    // One text per code, with a formed key that comes back to the caller.
    ReadResult r = read("l = { 1 2 \"{\" }");
    EXPECT_EQ(r.error, ConfKeyFactory::err_bad_list);
    EXPECT_NE(r.key, nullptr);
    r = read("s = { a = 1 b }");
    EXPECT_EQ(r.error, ConfKeyFactory::err_bad_section);
    ASSERT_NE(r.key, nullptr);
    EXPECT_EQ(dynamic_cast<const ConfKeyMulti&>(*r.key).get_nbr_keys(), 1);
    r = read("v = \"{\"");
    EXPECT_EQ(r.error, ConfKeyFactory::err_missing_value);
    EXPECT_NE(r.key, nullptr);
}

TEST(ConfKeyFactory, KeyNamesWithPathSeparatorsThrowOutOfTheReader)
{
    for (const char* text : {"a/b = 1", "s = { ok = 1 bad\\name = 2 }"})
    {
        try
        {
            ConfKeyFactory::use_instance().create_key(text);
            ADD_FAILURE() << text;
        }
        catch (const std::runtime_error& e)
        {
            EXPECT_STREQ(e.what(), "basic::ConfKeyInterface::check_name_throw() : Invalid name.");
        }
    }
}

TEST(ConfKeyFactory, WrittenTreesReadBackToTheSameTree)
{
    ConfKeyMulti root("Zarquette_config_section");
    ConfKeyData version("version", "1.12");
    version.set_comment("written by a test");
    root.add_key(version);
    ConfKeyMulti midi("midi");
    midi.set_comment("ports");
    midi.add_key(ConfKeyData("port_in", "USB MIDI, port 1"));
    ConfKeyContentMulti long_list;
    for (int i = 0; i < 12; ++i)
    {
        ConfKeyContentMulti pair;
        pair.add_elt(ConfKeyContentString(std::to_string(i)));
        pair.add_elt(ConfKeyContentString("v\t" + std::to_string(i)));
        long_list.add_elt(pair);
    }
    ConfKeyData map("control_map");
    map.set_content(long_list);
    midi.add_key(map);
    root.add_key(midi);

    const std::string text = write(root);
    const ReadResult r = read(text);
    ASSERT_EQ(r.error, 0);
    ASSERT_NE(r.key, nullptr);
    root.set_comment("");
    version.set_comment("");
    // Comments are not read back; with them gone the texts are equal.
    ConfKeyMulti bare = root;
    static_cast<ConfKeyInterface&>(bare.use_key(0)).set_comment("");
    static_cast<ConfKeyInterface&>(bare.use_key(1)).set_comment("");
    EXPECT_EQ(write(*r.key), write(bare));
    EXPECT_EQ(dynamic_cast<const ConfKeyMulti&>(*r.key).get_string("midi/port_in"), "USB MIDI, port 1");
}

TEST(ConfKeyFactory, ASectionWithoutChildrenReadsBackAsAnEmptyList)
{
    ConfKeyMulti empty("s");
    const ReadResult r = read(write(empty));
    ASSERT_EQ(r.error, 0);
    EXPECT_EQ(dynamic_cast<const ConfKeyContentMulti&>(content_of(*r.key)).get_nbr_elt(), 0);
}

TEST(ConfKeyFactory, EachReadStartsAfresh)
{
    ConfKeyFactory factory;
    EXPECT_EQ(factory.create_key("a = {"), nullptr);
    EXPECT_EQ(factory.get_last_error(), ConfKeyFactory::err_tokens);
    EXPECT_NE(factory.create_key("a = 1"), nullptr);
    EXPECT_EQ(factory.get_last_error(), 0);
}

}  // namespace
