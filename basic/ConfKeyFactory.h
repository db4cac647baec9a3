#pragma once

#include "basic/ConfKeyInterface.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace basic
{

class ConfKeyContentInterface;
class ConfKeyContentMulti;
class ConfKeyData;
class ConfKeyMulti;

// Reads configuration text into a key tree. A text holds one top-level key:
//     name = value            a leaf whose value is a word or "quoted words"
//     name = { a b { c } }    a leaf whose value is a list (lists nest)
//     name = { k = v ... }    a section: its first member is a key
// The factory keeps the tokens and the error of the last text it read, so one
// factory reads one text at a time. Nodes are moved into their parents as they
// are finished, never copied, so reading stays linear in the text however deep
// it nests.
class ConfKeyFactory
{
public:
    // Error codes of get_last_error().
    // A key is only formed when its value token is there, so this reader
    // never answers -1016 (a string value without a token).
    static constexpr int err_no_key = -1015;
    static constexpr int err_bad_list = -1017;
    static constexpr int err_missing_value = -1018;
    static constexpr int err_bad_section = -1019;
    static constexpr int err_tokens = -1020;

    // The process's shared factory.
    static ConfKeyFactory& use_instance();

    // The key the text begins with, or null. A key also comes back when reading
    // it failed further on; get_last_error() tells. Throws std::runtime_error
    // when a key name holds "/" or a backslash.
    std::unique_ptr<ConfKeyInterface> create_key(const std::string& text);
    // 0 after a clean read and after a text without any token (null key).
    int get_last_error() const { return _last_error; }

private:
    int get_nbr_left() const;
    // The structural tokens are single characters: "=", "{" and "}".
    bool is_token(std::size_t pos, char token) const;
    std::unique_ptr<ConfKeyInterface> form_key();
    int read_key(ConfKeyInterface& key);
    int read_leaf_value(ConfKeyData& key);
    int read_section_body(ConfKeyMulti& section);
    int read_content(std::unique_ptr<ConfKeyContentInterface>& content);
    int read_elt(ConfKeyContentMulti& list);
    int read_list(std::unique_ptr<ConfKeyContentInterface>& content);

    // The tokens are views into _spelling (see ConfKeyTokenizer).
    std::string _spelling;
    std::vector<std::string_view> _tokens;
    std::size_t _pos = 0;
    int _last_error = 0;
};

}  // namespace basic
