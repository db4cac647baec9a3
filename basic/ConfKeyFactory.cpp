#include "basic/ConfKeyFactory.h"

#include "basic/ConfKeyContentMulti.h"
#include "basic/ConfKeyContentString.h"
#include "basic/ConfKeyData.h"
#include "basic/ConfKeyMulti.h"
#include "basic/ConfKeyTokenizer.h"

namespace basic
{

ConfKeyFactory& ConfKeyFactory::use_instance()
{
    static ConfKeyFactory instance;
    return instance;
}

std::unique_ptr<ConfKeyInterface> ConfKeyFactory::create_key(const std::string& text)
{
    _pos = 0;
    if (ConfKeyTokenizer(_spelling, _tokens).tokenize(text) != 0)
    {
        _last_error = err_tokens;
        return nullptr;
    }
    std::unique_ptr<ConfKeyInterface> key = form_key();
    if (key == nullptr)
    {
        _last_error = _tokens.empty() ? 0 : err_no_key;
        return nullptr;
    }
    const int err = read_key(*key);
    _last_error = err != 0 ? err : (_pos != _tokens.size() ? err_no_key : 0);
    return key;
}

int ConfKeyFactory::get_nbr_left() const
{
    return static_cast<int>(_tokens.size() - _pos);
}

bool ConfKeyFactory::is_token(std::size_t pos, char token) const
{
    const std::string_view t = _tokens[pos];
    return t.size() == 1 && t[0] == token;
}

// name = value, where neither name nor value is "="; a section when the value
// opens with "{" and the first member is itself "name =".
std::unique_ptr<ConfKeyInterface> ConfKeyFactory::form_key()
{
    const std::size_t p = _pos;
    if (get_nbr_left() < 3 || !is_token(p + 1, '=') || is_token(p, '=') || is_token(p + 2, '='))
    {
        return nullptr;
    }
    if (get_nbr_left() >= 5 && is_token(p + 2, '{') && is_token(p + 4, '='))
    {
        return std::make_unique<ConfKeyMulti>(std::string(_tokens[p]));
    }
    return std::make_unique<ConfKeyData>(std::string(_tokens[p]));
}

int ConfKeyFactory::read_key(ConfKeyInterface& key)
{
    auto* section = dynamic_cast<ConfKeyMulti*>(&key);
    return section != nullptr ? read_section_body(*section) : read_leaf_value(static_cast<ConfKeyData&>(key));
}

int ConfKeyFactory::read_leaf_value(ConfKeyData& key)
{
    _pos += 2;
    if (get_nbr_left() < 1)
    {
        return err_missing_value;
    }
    std::unique_ptr<ConfKeyContentInterface> content;
    const int err = read_content(content);
    if (err == 0)
    {
        key.set_content(std::move(content));
    }
    return err;
}

int ConfKeyFactory::read_section_body(ConfKeyMulti& section)
{
    _pos += 3;
    while (true)
    {
        if (get_nbr_left() < 1)
        {
            return err_bad_section;
        }
        if (is_token(_pos, '}'))
        {
            break;
        }
        std::unique_ptr<ConfKeyInterface> child = get_nbr_left() >= 4 ? form_key() : nullptr;
        if (child == nullptr)
        {
            return err_bad_section;
        }
        const int err = read_key(*child);
        if (err != 0)
        {
            return err;
        }
        section.add_key(std::move(child));
    }
    ++_pos;
    return 0;
}

// A leaf's value at the current token, which exists: a list when it is "{",
// a string otherwise.
int ConfKeyFactory::read_content(std::unique_ptr<ConfKeyContentInterface>& content)
{
    if (!is_token(_pos, '{'))
    {
        content = std::make_unique<ConfKeyContentString>(std::string(_tokens[_pos]));
        ++_pos;
        return 0;
    }
    return get_nbr_left() >= 2 ? read_list(content) : err_missing_value;
}

// An element of a list at the current token, which is followed by at least one
// more. Strings go into the list in place: they are the bulk of a large file.
int ConfKeyFactory::read_elt(ConfKeyContentMulti& list)
{
    if (!is_token(_pos, '{'))
    {
        list.add_string(std::string(_tokens[_pos]));
        ++_pos;
        return 0;
    }
    std::unique_ptr<ConfKeyContentInterface> nested;
    const int err = read_list(nested);
    if (err == 0)
    {
        list.add_elt(std::move(nested));
    }
    return err;
}

int ConfKeyFactory::read_list(std::unique_ptr<ConfKeyContentInterface>& content)
{
    auto list = std::make_unique<ConfKeyContentMulti>();
    ++_pos;
    while (true)
    {
        if (get_nbr_left() < 1)
        {
            return err_bad_list;
        }
        if (is_token(_pos, '}'))
        {
            break;
        }
        const int err = get_nbr_left() >= 2 ? read_elt(*list) : err_bad_list;
        if (err != 0)
        {
            return err;
        }
    }
    ++_pos;
    content = std::move(list);
    return 0;
}

}  // namespace basic
