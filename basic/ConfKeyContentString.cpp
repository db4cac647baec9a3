#include "basic/ConfKeyContentString.h"

#include <utility>

namespace basic
{

ConfKeyContentString::ConfKeyContentString(std::string value) : _value(std::move(value))
{
}

int ConfKeyContentString::do_write_to_string(std::string& text, int& /*level*/) const
{
    append_word(text, _value);
    return 0;
}

std::unique_ptr<ConfKeyContentInterface> ConfKeyContentString::clone() const
{
    return std::make_unique<ConfKeyContentString>(*this);
}

}  // namespace basic
