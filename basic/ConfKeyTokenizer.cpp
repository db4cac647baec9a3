#include "basic/ConfKeyTokenizer.h"

namespace basic
{

namespace
{

bool is_separator(char c)
{
    return c == ' ' || c == '\n' || c == '\t' || c == '\b' || c == '\v';
}

}  // namespace

ConfKeyTokenizer::ConfKeyTokenizer(std::vector<std::string>& tokens) : _tokens(tokens)
{
}

int ConfKeyTokenizer::tokenize(const std::string& text)
{
    _depth = 0;
    _error = 0;
    std::string work;
    std::size_t begin = 0;
    while (_error == 0 && begin < text.size())
    {
        const std::size_t lf = text.find('\n', begin);
        const std::size_t end = lf == std::string::npos ? text.size() : lf + 1;
        const int line_error = copy_line(text, begin, end, work);
        if (line_error != 0)
        {
            _error = line_error;
        }
        else if (_error == 0)
        {
            split_line(work);
        }
        begin = end;
    }
    return _depth > 0 ? err_unclosed : _error;
}

// Copies one line into work, spacing out the structural characters and
// dropping the comment. Answers err_open_quote when the line ends inside quotes.
int ConfKeyTokenizer::copy_line(const std::string& text, std::size_t begin, std::size_t end, std::string& work)
{
    work.clear();
    bool quoted = false;
    for (std::size_t i = begin; i < end; ++i)
    {
        const char c = text[i];
        if (c == '"')
        {
            quoted = !quoted;
            work += c;
        }
        else if (quoted)
        {
            work += c;
        }
        else if (c == '/' && i + 1 < end && text[i + 1] == '/')
        {
            break;
        }
        else
        {
            copy_outside_quotes(c, work);
        }
    }
    return quoted ? err_open_quote : 0;
}

void ConfKeyTokenizer::copy_outside_quotes(char c, std::string& work)
{
    if (c == '=' || c == '{' || c == '}')
    {
        work += ' ';
        work += c;
        work += ' ';
        _depth += c == '{' ? 1 : c == '}' ? -1 : 0;
        if (_depth < 0 && _error == 0)
        {
            _error = err_unmatched_close;
        }
        if (_depth > max_depth && _error == 0)
        {
            _error = err_too_deep;
        }
    }
    else if (c != '\r')
    {
        work += c;
    }
}

// Words are runs of non-separators; a quoted token runs to the next quote and
// keeps its separators. A quote also ends a word written right before it.
void ConfKeyTokenizer::split_line(const std::string& work)
{
    std::size_t i = 0;
    while (i < work.size())
    {
        if (is_separator(work[i]))
        {
            ++i;
        }
        else if (work[i] == '"')
        {
            const std::size_t close = work.find('"', i + 1);
            const std::size_t stop = close == std::string::npos ? work.size() : close;
            _tokens.push_back(work.substr(i + 1, stop - i - 1));
            i = stop + 1;
        }
        else
        {
            std::size_t stop = i;
            while (stop < work.size() && !is_separator(work[stop]) && work[stop] != '"')
            {
                ++stop;
            }
            _tokens.push_back(work.substr(i, stop - i));
            i = stop;
        }
    }
}

}  // namespace basic
