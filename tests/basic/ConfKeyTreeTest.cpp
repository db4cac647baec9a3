#include "basic/ConfKeyContentMulti.h"
#include "basic/ConfKeyContentString.h"
#include "basic/ConfKeyData.h"
#include "basic/ConfKeyMulti.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace
{

using basic::ConfKeyContentMulti;
using basic::ConfKeyContentString;
using basic::ConfKeyData;
using basic::ConfKeyInterface;
using basic::ConfKeyMulti;

std::string write(const ConfKeyInterface& key, int start_level = 0)
{
    std::string text;
    int level = start_level;
    EXPECT_EQ(key.do_write_to_string(text, level), 0);
    EXPECT_EQ(level, start_level);
    return text;
}

ConfKeyContentMulti make_list(int count)
{
    ConfKeyContentMulti list;
    for (int i = 0; i < count; ++i)
    {
        list.add_elt(ConfKeyContentString(std::to_string(i)));
    }
    return list;
}

TEST(ConfKeyTree, WritesTheDocumentedExampleByteForByte)
{
    ConfKeyMulti midi("midi");
    ConfKeyData version("version", "1.00");
    version.set_comment("file format");
    midi.add_key(version);
    ConfKeyMulti map("control_map");
    map.set_comment("first\nsecond\r");  // comments stay on one line
    map.add_key(ConfKeyData("k1", "x y"));
    midi.add_key(map);

    EXPECT_EQ(write(midi), "midi =\n"
                           "{\n"
                           "   version = 1.00\t// file format\n"
                           "   // first second\r\n"
                           "   control_map =\n"
                           "   {\n"
                           "      k1 = \"x y\"\n"
                           "   }\n"
                           "}");
}

// Names with path separators are refused and leave the key alone; anonymous
// keys cannot be written, and the level comes back; make_valid_name keeps only
// ASCII letters and digits.
TEST(ConfKeyTree, NamesThatCannotStandInAFile)
{
    EXPECT_THROW(ConfKeyData("a/b"), std::runtime_error);
    EXPECT_THROW(ConfKeyMulti("a\\b"), std::runtime_error);
    ConfKeyMulti key("good");
    EXPECT_THROW(key.set_name("bad/"), std::runtime_error);
    EXPECT_EQ(key.get_name(), "good");
    key.add_key(ConfKeyData(""));
    std::string text;
    int level = 2;
    EXPECT_THROW(key.do_write_to_string(text, level), std::runtime_error);
    EXPECT_EQ(level, 2);

    EXPECT_EQ(ConfKeyInterface::make_valid_name("Vin Rouge"), "Vin_Rouge");
    EXPECT_EQ(ConfKeyInterface::make_valid_name("a/b\\c.d-e\xe9" "9"), "a_b_c_d_e_9");
}

TEST(ConfKeyTree, KeysAreFoundByNameInOrderAndByPath)
{
    ConfKeyMulti root("root");
    root.add_key(ConfKeyData("k", "1"));
    root.add_key(ConfKeyMulti("k"));
    root.add_key(ConfKeyData("k", "2"));

    EXPECT_EQ(root.find_key_data("k"), 0);
    EXPECT_EQ(root.find_key_data("k", 1), 2);
    EXPECT_EQ(root.find_key_data("k", 3), -1);
    EXPECT_EQ(root.find_key_multi("k"), 1);
    EXPECT_EQ(root.find_key_data("K"), -1);
    EXPECT_EQ(root.find_key_data("k", -5), 0);

    root.set_key(ConfKeyData("k", "3"));
    ASSERT_EQ(root.get_nbr_keys(), 3);
    EXPECT_EQ(root.get_string("k"), "3");
    EXPECT_EQ(root.find_key_data("k", 1), 2);
    root.set_key(ConfKeyData("new", "4"));
    EXPECT_EQ(root.get_nbr_keys(), 4);
    EXPECT_EQ(root.use_key(3).get_name(), "new");

    // Paths use either separator and follow the first child of a name.
    ConfKeyMulti tree("root");
    ConfKeyMulti a("a");
    a.add_key(ConfKeyData("b", "deep"));
    tree.add_key(a);
    ConfKeyMulti shadowed("a");
    shadowed.add_key(ConfKeyData("c", "hidden"));
    tree.add_key(shadowed);
    tree.add_key(ConfKeyData("leaf", "v"));

    const ConfKeyInterface* b = tree.use_key_from_path("a/b");
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(tree.use_key_from_path("a\\b"), b);
    EXPECT_EQ(tree.use_key_from_path("a/b/"), b);
    EXPECT_EQ(tree.use_key_from_path("a/c"), nullptr);
    EXPECT_EQ(tree.use_key_from_path("leaf/x"), nullptr);
    EXPECT_EQ(tree.get_string("a/b"), "deep");
    EXPECT_EQ(tree.get_string("a"), "");
    EXPECT_EQ(tree.get_string("missing"), "");

    for (const char* bad : {"/a", "", "a//b"})
    {
        EXPECT_THROW(tree.use_key_from_path(bad), std::runtime_error) << bad;
    }
    // A list value is no string.
    ConfKeyData list("l");
    list.set_content(make_list(2));
    tree.add_key(list);
    EXPECT_EQ(tree.get_string("l"), "");
}

TEST(ConfKeyTree, StoringAndCopyingAreDeep)
{
    ConfKeyMulti child("child");
    child.add_key(ConfKeyData("v", "1"));
    ConfKeyMulti root("root");
    root.add_key(child);
    child.add_key(ConfKeyData("w", "2"));
    EXPECT_EQ(static_cast<const ConfKeyMulti&>(root.use_key(0)).get_nbr_keys(), 1);

    ConfKeyMulti copy = root;
    static_cast<ConfKeyMulti&>(root.use_key(0)).add_key(ConfKeyData("x", "3"));
    EXPECT_EQ(write(copy), "root =\n{\n   child =\n   {\n      v = 1\n   }\n}");

    const auto clone = root.clone();
    root.set_name("renamed");
    EXPECT_EQ(clone->get_name(), "root");
    root.add_key(root);  // a key may be stored into itself: a copy goes in
    EXPECT_EQ(root.get_nbr_keys(), 2);

    ConfKeyData data("d", "a");
    ConfKeyData other("o", "b");
    other = data;
    data.set_content(ConfKeyContentString("changed"));
    EXPECT_EQ(write(other), "d = a");

    // Strings are held in the list itself and nested lists as nodes: a copy
    // must still be deep for both, and an element of the list may be appended
    // to it.
    ConfKeyContentMulti list = make_list(2);
    list.add_string("s");
    list.add_elt(std::make_unique<ConfKeyContentMulti>(make_list(1)));
    list.add_elt(list.use_elt(0));
    list.add_elt(list.use_elt(3));

    ConfKeyContentMulti copied = list;
    ConfKeyContentMulti assigned;
    assigned = list;
    dynamic_cast<ConfKeyContentString&>(list.use_elt(0)).set_string("changed");
    dynamic_cast<ConfKeyContentMulti&>(list.use_elt(3)).add_string("more");
    ConfKeyData key("k");
    for (const ConfKeyContentMulti* deep : {&copied, &assigned})
    {
        key.set_content(*deep);
        EXPECT_EQ(write(key), "k = { 0 1 s { 0 } 0 { 0 } }");
    }
    key.set_content(list);
    EXPECT_EQ(write(key), "k = { changed 1 s { 0 more } 0 { 0 } }");
    list.clear();
    EXPECT_EQ(list.get_nbr_elt(), 0);
}

}  // namespace
