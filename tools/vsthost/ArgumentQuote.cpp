#include "ArgumentQuote.h"

namespace vsthost
{

std::string quote_argument(const std::string& word)
{
    if (!word.empty() && word.find_first_of(" \t\n\v\"") == std::string::npos)
    {
        return word;
    }
    std::string out = "\"";
    std::size_t backslashes = 0;
    for (const char c : word)
    {
        if (c == '\\')
        {
            ++backslashes;
            continue;
        }
        // Backslashes are doubled only before a quote, which gets one of its own.
        out.append(c == '"' ? backslashes * 2 + 1 : backslashes, '\\');
        out += c;
        backslashes = 0;
    }
    // And before the closing quote.
    out.append(backslashes * 2, '\\');
    return out + "\"";
}

}  // namespace vsthost
