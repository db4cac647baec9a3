#include "basic/ConfKeyInterface.h"

#include <algorithm>
#include <stdexcept>

namespace basic
{

ConfKeyInterface::ConfKeyInterface(const std::string& name) : _name(name)
{
    check_name_throw(_name);
}

int ConfKeyInterface::do_write_to_string(std::string& text, int& level) const
{
    if (_name.empty())
    {
        throw std::runtime_error("basic::ConfKeyInterface::do_write_to_string() : Key can't be anonymous.");
    }
    return do_write_key(text, level);
}

void ConfKeyInterface::set_name(const std::string& name)
{
    check_name_throw(name);
    _name = name;
}

void ConfKeyInterface::set_comment(const std::string& comment)
{
    _comment = comment;
    std::replace(_comment.begin(), _comment.end(), '\n', ' ');
}

void ConfKeyInterface::check_name_throw(const std::string& name)
{
    if (name.find_first_of("/\\") != std::string::npos)
    {
        throw std::runtime_error("basic::ConfKeyInterface::check_name_throw() : Invalid name.");
    }
}

std::string ConfKeyInterface::make_valid_name(const std::string& str)
{
    // Spelled out rather than isalnum(): the result must not depend on the
    // locale, and bytes above 127 are never letters here.
    const auto is_alnum = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    };
    std::string valid = str;
    std::replace_if(valid.begin(), valid.end(), [&](char c) { return !is_alnum(c); }, '_');
    return valid;
}

}  // namespace basic
