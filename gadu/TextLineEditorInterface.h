#pragma once

#include "gadu/Rect.h"

#include <cstdint>
#include <string>

namespace gadu
{

class MessageHandlerInterface;
class TextInputRequest;

// A one-line text field that a window opens for a control: it remembers who
// asked and answers them once with TextInputFinished. The platform part makes
// and closes the field itself.
class TextLineEditorInterface
{
public:
    // The longest text a finished field delivers.
    static constexpr std::size_t kMaxTextLength = 1023;

    virtual ~TextLineEditorInterface() = default;
    TextLineEditorInterface(const TextLineEditorInterface&) = delete;
    TextLineEditorInterface& operator=(const TextLineEditorInterface&) = delete;

    // 0, or -1 when the field could not be made.
    virtual std::int32_t start(const TextInputRequest& request) = 0;
    // Closes the open field as cancelled: 0, or -1 when none is open.
    virtual std::int32_t stop() = 0;

    bool is_active() const { return _active; }
    bool is_accepted() const { return _accepted; }
    MessageHandlerInterface* use_requester() const { return _requester; }
    const Rect& get_rect() const { return _rect; }
    const std::string& get_initial_text() const { return _text; }

protected:
    TextLineEditorInterface() = default;

    // Takes over the request as the open field's.
    void begin(const TextInputRequest& request);
    // How the field is being closed, settled before the platform tears it down.
    void set_accepted(bool accepted) { _accepted = accepted; }
    // The field is gone: tells the requester, once, what it held.
    void finish(const std::string& text);

private:
    MessageHandlerInterface* _requester = nullptr;
    Rect _rect;
    std::string _text;
    bool _accepted = false;
    bool _active = false;
};

}  // namespace gadu
