#include "gadu/TextLineEditorInterface.h"

#include "gadu/KeyboardMessage.h"
#include "gadu/MessageHandlerInterface.h"
#include "gadu/TextInputRequest.h"

namespace gadu
{

void TextLineEditorInterface::begin(const TextInputRequest& request)
{
    _requester = request.use_requester();
    _rect = request.get_rect();
    _text = request.get_text();
    _accepted = false;
    _active = true;
}

void TextLineEditorInterface::finish(const std::string& text)
{
    if (!_active)
    {
        return;
    }
    // Inactive before the requester hears of it, so that it may open a new field.
    _active = false;
    MessageHandlerInterface* requester = _requester;
    _requester = nullptr;
    if (requester != nullptr)
    {
        requester->handle_message(TextInputFinished(text.substr(0, kMaxTextLength), _accepted));
    }
}

}  // namespace gadu
