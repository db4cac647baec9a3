#pragma once

#include "gadu/MessageInterface.h"

#include <string>
#include <utility>

namespace gadu
{

class MessageHandlerInterface;

// Opens a one-line text field over the rectangle (window pixels); the
// requester gets the result as TextInputFinished.
class TextInputRequest : public MessageUp
{
public:
    TextInputRequest(MessageHandlerInterface* requester, const Rect& rect, std::string text)
        : _requester(requester), _rect(rect), _text(std::move(text))
    {
    }

    MessageHandlerInterface* use_requester() const { return _requester; }
    const Rect& get_rect() const { return _rect; }
    const std::string& get_text() const { return _text; }

private:
    MessageHandlerInterface* _requester;
    Rect _rect;
    std::string _text;
};

// Closes an open text field.
class TextInputStop : public MessageUp
{
};

}  // namespace gadu
