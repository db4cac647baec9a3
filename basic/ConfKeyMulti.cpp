#include "basic/ConfKeyMulti.h"

#include "basic/ConfKeyContentString.h"
#include "basic/ConfKeyData.h"

#include <algorithm>
#include <stdexcept>

namespace basic
{

ConfKeyMulti::ConfKeyMulti(const std::string& name) : ConfKeyInterface(name)
{
}

std::unique_ptr<ConfKeyInterface> ConfKeyMulti::clone() const
{
    return std::make_unique<ConfKeyMulti>(*this);
}

template <class Kind>
int ConfKeyMulti::find_key(const std::string& name, int start) const
{
    for (int i = std::max(start, 0); i < get_nbr_keys(); ++i)
    {
        const ConfKeyInterface& key = use_key(i);
        if (key.get_name() == name && dynamic_cast<const Kind*>(&key) != nullptr)
        {
            return i;
        }
    }
    return -1;
}

int ConfKeyMulti::find_key_multi(const std::string& name, int start) const
{
    return find_key<ConfKeyMulti>(name, start);
}

int ConfKeyMulti::find_key_data(const std::string& name, int start) const
{
    return find_key<ConfKeyData>(name, start);
}

int ConfKeyMulti::find_key_any(const std::string& name) const
{
    return find_key<ConfKeyInterface>(name, 0);
}

const ConfKeyInterface* ConfKeyMulti::use_key_from_path(const std::string& path) const
{
    std::string first;
    std::string rest;
    split_key_path_first(path, first, rest);
    const int pos = find_key_any(first);
    if (pos < 0)
    {
        return nullptr;
    }
    const ConfKeyInterface& child = use_key(pos);
    if (rest.empty())
    {
        return &child;
    }
    const auto* section = dynamic_cast<const ConfKeyMulti*>(&child);
    return section != nullptr ? section->use_key_from_path(rest) : nullptr;
}

ConfKeyInterface* ConfKeyMulti::use_key_from_path(const std::string& path)
{
    return const_cast<ConfKeyInterface*>(static_cast<const ConfKeyMulti*>(this)->use_key_from_path(path));
}

std::string ConfKeyMulti::get_string(const std::string& path) const
{
    const auto* leaf = dynamic_cast<const ConfKeyData*>(use_key_from_path(path));
    if (leaf == nullptr)
    {
        return std::string();
    }
    const auto* value = dynamic_cast<const ConfKeyContentString*>(&leaf->use_content());
    return value != nullptr ? value->get_string() : std::string();
}

void ConfKeyMulti::add_key(const ConfKeyInterface& key)
{
    _keys.append(key);
}

void ConfKeyMulti::add_key(std::unique_ptr<ConfKeyInterface> key)
{
    _keys.append(std::move(key));
}

void ConfKeyMulti::set_key(const ConfKeyInterface& key)
{
    const int pos = find_key_any(key.get_name());
    if (pos < 0)
    {
        _keys.append(key);
    }
    else
    {
        _keys.replace(pos, key);
    }
}

void ConfKeyMulti::split_key_path_first(const std::string& path, std::string& first, std::string& rest)
{
    const std::size_t sep = path.find_first_of("/\\");
    std::string head = path.substr(0, sep);
    if (head.empty())
    {
        throw std::runtime_error("basic::ConfKeyMulti::split_key_path_first() : Invalid key path.");
    }
    rest = sep == std::string::npos ? std::string() : path.substr(sep + 1);
    first = std::move(head);
}

// [// comment]
// name =
// {
//    child
// }
int ConfKeyMulti::do_write_key(std::string& text, int& level) const
{
    if (!get_comment().empty())
    {
        append_indent(text, level);
        text += "// ";
        text += get_comment();
        text += '\n';
    }
    append_indent(text, level);
    append_word(text, get_name());
    text += " =\n";
    append_indent(text, level);
    text += "{\n";
    const int err = write_children(text, level);
    if (err != 0)
    {
        return err;
    }
    append_indent(text, level);
    text += '}';
    return 0;
}

int ConfKeyMulti::write_children(std::string& text, int& level) const
{
    const LevelRaise raise(level);
    for (int i = 0; i < get_nbr_keys(); ++i)
    {
        const int err = use_key(i).do_write_to_string(text, level);
        if (err != 0)
        {
            return err;
        }
        text += '\n';
    }
    return 0;
}

}  // namespace basic
