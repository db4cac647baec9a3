#pragma once

#include "gadu/MessageInterface.h"

#include <cstdint>
#include <string>
#include <utility>

namespace gadu
{

// Groups the messages about typed input.
class KeyboardMessage
{
public:
    virtual ~KeyboardMessage() = default;

protected:
    KeyboardMessage() = default;
};

// A key for the control; the window itself never produces one.
class KeyPressed : public MessageDown, public KeyboardMessage
{
public:
    explicit KeyPressed(std::int32_t key) : MessageDown(Rect{}), _key(key) {}
    std::int32_t get_key() const { return _key; }

private:
    std::int32_t _key;
};

// The answer to a text input request: the final text, and whether the user
// accepted it (Enter, focus lost) or cancelled (Escape).
class TextInputFinished : public MessageDown, public KeyboardMessage
{
public:
    TextInputFinished(std::string text, bool accepted)
        : MessageDown(Rect{}), _text(std::move(text)), _accepted(accepted ? 1 : 0)
    {
    }

    const std::string& get_text() const { return _text; }
    bool is_accepted() const { return _accepted != 0; }

private:
    std::string _text;
    std::uint8_t _accepted;
};

}  // namespace gadu
