// Configuration files are edited by hand and may hold anything: the reader must
// answer one of its codes without crashing, hanging or reading out of bounds,
// and a tree it reads cleanly must write to a text that reads back to the same
// tree.
#include "basic/ConfKeyContentMulti.h"
#include "basic/ConfKeyContentString.h"
#include "basic/ConfKeyData.h"
#include "basic/ConfKeyFactory.h"
#include "basic/ConfKeyMulti.h"
#include "tests/fuzz/FuzzCheck.h"

#include <stdexcept>
#include <string>

namespace
{

using basic::ConfKeyContentInterface;
using basic::ConfKeyContentMulti;
using basic::ConfKeyContentString;
using basic::ConfKeyData;
using basic::ConfKeyInterface;
using basic::ConfKeyMulti;

// A word that the writer puts out so that the reader sees it again as the
// same single token. Quoted words lose that when they hold characters the
// writer does not quote for (braces, "=", quotes, "//", CR, backspace, VT).
bool is_clean_word(const std::string& word)
{
    return !word.empty() && word.find_first_of("\"\r\b\v{}") == std::string::npos &&
           word.find("//") == std::string::npos && (word == "=" || word.find('=') == std::string::npos);
}

bool is_clean_content(const ConfKeyContentInterface& content)
{
    if (const auto* text = dynamic_cast<const ConfKeyContentString*>(&content))
    {
        return is_clean_word(text->get_string());
    }
    const auto& list = dynamic_cast<const ConfKeyContentMulti&>(content);
    bool clean = true;
    for (int i = 0; i < list.get_nbr_elt(); ++i)
    {
        clean = clean && is_clean_content(list.use_elt(i));
    }
    return clean;
}

bool is_clean_key(const ConfKeyInterface& key)
{
    if (const auto* leaf = dynamic_cast<const ConfKeyData*>(&key))
    {
        return is_clean_word(key.get_name()) && is_clean_content(leaf->use_content());
    }
    const auto& section = dynamic_cast<const ConfKeyMulti&>(key);
    bool clean = is_clean_word(key.get_name());
    for (int i = 0; i < section.get_nbr_keys(); ++i)
    {
        clean = clean && is_clean_key(section.use_key(i));
    }
    return clean;
}

std::string write(const ConfKeyInterface& key)
{
    std::string text;
    int level = 0;
    zq_test::require(key.do_write_to_string(text, level) == 0 && level == 0);
    return text;
}

bool is_reader_code(int error)
{
    return error == 0 || (error >= -1020 && error <= -1015 && error != -1016);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    basic::ConfKeyFactory factory;
    std::unique_ptr<ConfKeyInterface> key;
    try
    {
        key = factory.create_key(std::string(reinterpret_cast<const char*>(data), size));
    }
    catch (const std::runtime_error&)
    {
        return 0;  // a key name holding a path separator
    }
    const int error = factory.get_last_error();
    zq_test::require(is_reader_code(error) && (key != nullptr || error == 0 || error == -1015 || error == -1020));
    if (key == nullptr || error != 0 || !is_clean_key(*key))
    {
        return 0;
    }
    const std::string written = write(*key);
    const auto again = factory.create_key(written);
    zq_test::require(again != nullptr && factory.get_last_error() == 0 && write(*again) == written);
    return 0;
}
