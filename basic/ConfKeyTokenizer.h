#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace basic
{

// Cuts configuration text into tokens, line by line: "=", "{" and "}" are
// tokens of their own, "//" starts a comment up to the end of the line,
// double quotes group a token (separators included) on one line, carriage
// returns outside quotes are dropped. Braces are counted across the text.
//
// A settings file may hold millions of tokens, so a token is not a string of
// its own: the characters of all tokens are spelled back to back into one
// buffer (without the dropped carriage returns, so a token is always one run
// of characters) and each token is a view into that buffer.
class ConfKeyTokenizer
{
public:
    static constexpr int err_open_quote = -1021;
    static constexpr int err_unmatched_close = -1022;
    static constexpr int err_unclosed = -1023;
    // Deeper nesting than this is refused, so that the reader's recursion
    // stays bounded whatever the text holds.
    static constexpr int err_too_deep = -1020;
    static constexpr int max_depth = 200;

    // The views put into tokens point into spelling: both stay with the caller,
    // who keeps spelling unchanged as long as it uses the tokens.
    ConfKeyTokenizer(std::string& spelling, std::vector<std::string_view>& tokens);

    // Replaces the spelling and the tokens with those of text; 0 or one of the
    // codes above. The tokens of the lines before a failing one are kept.
    int tokenize(const std::string& text);

private:
    int split_line(const std::string& text, std::size_t begin, std::size_t end);
    void split_outside_quotes(char c);
    void put_structural(char c);
    void open_token();
    void close_token();

    std::string& _spelling;
    std::vector<std::string_view>& _tokens;
    // Where the token being spelled begins in _spelling, or npos between tokens.
    std::size_t _token_begin = std::string::npos;
    int _depth = 0;
    int _error = 0;
};

}  // namespace basic
