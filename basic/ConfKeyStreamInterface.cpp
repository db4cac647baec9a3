#include "basic/ConfKeyStreamInterface.h"

namespace basic
{

void ConfKeyStreamInterface::append_indent(std::string& text, int level)
{
    if (level > 0)
    {
        text.append(static_cast<std::size_t>(level) * 3, ' ');
    }
}

void ConfKeyStreamInterface::append_word(std::string& text, const std::string& word)
{
    const bool quoted = word.find_first_of(" \t\n,") != std::string::npos;
    if (quoted)
    {
        text += '"';
    }
    text += word;
    if (quoted)
    {
        text += '"';
    }
}

}  // namespace basic
