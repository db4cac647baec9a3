#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace basic
{

// Cuts configuration text into tokens, line by line: "=", "{" and "}" are
// tokens of their own, "//" starts a comment up to the end of the line,
// double quotes group a token (separators included) on one line, carriage
// returns outside quotes are dropped. Braces are counted across the text.
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

    explicit ConfKeyTokenizer(std::vector<std::string>& tokens);

    // Appends the tokens of text; 0 or one of the codes above.
    int tokenize(const std::string& text);

private:
    int copy_line(const std::string& text, std::size_t begin, std::size_t end, std::string& work);
    void copy_outside_quotes(char c, std::string& work);
    void split_line(const std::string& work);

    std::vector<std::string>& _tokens;
    int _depth = 0;
    int _error = 0;
};

}  // namespace basic
