#include "basic/ConfKeyData.h"

#include "basic/ConfKeyContentString.h"

namespace basic
{

ConfKeyData::ConfKeyData(const std::string& name) : ConfKeyData(name, std::string())
{
}

ConfKeyData::ConfKeyData(const std::string& name, const std::string& value)
    : ConfKeyInterface(name), _content(std::make_unique<ConfKeyContentString>(value))
{
}

ConfKeyData::ConfKeyData(const ConfKeyData& other) : ConfKeyInterface(other), _content(other._content->clone())
{
}

ConfKeyData& ConfKeyData::operator=(const ConfKeyData& other)
{
    auto content = other._content->clone();
    ConfKeyInterface::operator=(other);
    _content = std::move(content);
    return *this;
}

std::unique_ptr<ConfKeyInterface> ConfKeyData::clone() const
{
    return std::make_unique<ConfKeyData>(*this);
}

void ConfKeyData::set_content(const ConfKeyContentInterface& content)
{
    _content = content.clone();
}

void ConfKeyData::set_content(std::unique_ptr<ConfKeyContentInterface> content)
{
    _content = std::move(content);
}

// name = value<TAB>// comment, without a line feed: the enclosing section ends the line.
int ConfKeyData::do_write_key(std::string& text, int& level) const
{
    append_indent(text, level);
    append_word(text, get_name());
    text += " = ";
    const int err = _content->do_write_to_string(text, level);
    if (err == 0 && !get_comment().empty())
    {
        text += "\t// ";
        text += get_comment();
    }
    return err;
}

}  // namespace basic
