#pragma once

#include <string>

namespace basic
{

// Anything of the configuration tree that can write itself in the text format.
// The level is the nesting depth; members of sections and long lists are
// written one level deeper, and the level is back at its entry value when a
// write returns.
class ConfKeyStreamInterface
{
public:
    virtual ~ConfKeyStreamInterface() = default;

    // Appends this node's text; 0, or an error code.
    virtual int do_write_to_string(std::string& text, int& level) const = 0;

protected:
    ConfKeyStreamInterface() = default;
    ConfKeyStreamInterface(const ConfKeyStreamInterface&) = default;
    ConfKeyStreamInterface& operator=(const ConfKeyStreamInterface&) = default;

    // Three spaces per level.
    static void append_indent(std::string& text, int level);
    // Quoted exactly when the word holds a space, a tab, a line feed or a comma,
    // which the reader would otherwise split on. Nothing is escaped.
    static void append_word(std::string& text, const std::string& word);

    // Raises the level for the members of a section or list, and lowers it
    // again however the writing ends.
    class LevelRaise
    {
    public:
        explicit LevelRaise(int& level) : _level(level) { ++_level; }
        ~LevelRaise() { --_level; }
        LevelRaise(const LevelRaise&) = delete;
        LevelRaise& operator=(const LevelRaise&) = delete;

    private:
        int& _level;
    };
};

}  // namespace basic
