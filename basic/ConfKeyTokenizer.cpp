#include "basic/ConfKeyTokenizer.h"

namespace basic
{

namespace
{

bool is_separator(char c)
{
    return c == ' ' || c == '\n' || c == '\t' || c == '\b' || c == '\v';
}

bool is_structural(char c)
{
    return c == '=' || c == '{' || c == '}';
}

}  // namespace

ConfKeyTokenizer::ConfKeyTokenizer(std::string& spelling, std::vector<std::string_view>& tokens)
    : _spelling(spelling), _tokens(tokens)
{
}

int ConfKeyTokenizer::tokenize(const std::string& text)
{
    _tokens.clear();
    _spelling.clear();
    // Every character of text is spelled at most once, so the buffer never
    // grows past this and the views already taken into it never move.
    _spelling.reserve(text.size());
    // A large text is mostly words of a few characters between separators:
    // making room for that many tokens at once saves copying the list at each
    // growth. A text with more tokens still grows the list as it needs.
    _tokens.reserve(text.size() / 2 + 1);
    _depth = 0;
    _error = 0;
    std::size_t begin = 0;
    while (_error == 0 && begin < text.size())
    {
        const std::size_t lf = text.find('\n', begin);
        const std::size_t end = lf == std::string::npos ? text.size() : lf + 1;
        const std::size_t nbr_before = _tokens.size();
        const int line_error = split_line(text, begin, end);
        if (line_error != 0)
        {
            _error = line_error;
        }
        if (_error != 0)
        {
            _tokens.resize(nbr_before);
        }
        begin = end;
    }
    return _depth > 0 ? err_unclosed : _error;
}

// Words are runs of non-separators; a quoted token runs to the next quote and
// keeps its separators. A quote also ends a word written right before it.
// The whole line is read even after an error, so that its braces still count.
// Answers err_open_quote when the line ends inside quotes.
int ConfKeyTokenizer::split_line(const std::string& text, std::size_t begin, std::size_t end)
{
    bool quoted = false;
    for (std::size_t i = begin; i < end; ++i)
    {
        const char c = text[i];
        if (c == '"')
        {
            close_token();
            quoted = !quoted;
            if (quoted)
            {
                open_token();
            }
        }
        else if (quoted)
        {
            _spelling += c;
        }
        else if (c == '/' && i + 1 < end && text[i + 1] == '/')
        {
            break;
        }
        else
        {
            split_outside_quotes(c);
        }
    }
    if (quoted)
    {
        _token_begin = std::string::npos;
        return err_open_quote;
    }
    close_token();
    return 0;
}

// A carriage return is dropped without ending the word it stands in.
void ConfKeyTokenizer::split_outside_quotes(char c)
{
    if (is_structural(c))
    {
        put_structural(c);
    }
    else if (is_separator(c))
    {
        close_token();
    }
    else if (c != '\r')
    {
        open_token();
        _spelling += c;
    }
}

void ConfKeyTokenizer::put_structural(char c)
{
    close_token();
    open_token();
    _spelling += c;
    close_token();
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

// Starts a token at the end of the spelling unless one is already open.
void ConfKeyTokenizer::open_token()
{
    if (_token_begin == std::string::npos)
    {
        _token_begin = _spelling.size();
    }
}

void ConfKeyTokenizer::close_token()
{
    if (_token_begin != std::string::npos)
    {
        _tokens.emplace_back(_spelling.data() + _token_begin, _spelling.size() - _token_begin);
        _token_begin = std::string::npos;
    }
}

}  // namespace basic
