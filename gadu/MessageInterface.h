#pragma once

#include "gadu/RectOps.h"

namespace gadu
{

// The region of down messages that concern every node, whatever its place.
constexpr Rect WHOLE_AREA{-32000, -32000, 32000, 32000};

// Everything that travels through the control tree. Receivers tell messages
// apart by their run-time type, never by a kind field: a new message class
// needs no registry, and a receiver that does not know it simply answers -1.
class MessageInterface
{
public:
    virtual ~MessageInterface() = default;

protected:
    MessageInterface() = default;
    MessageInterface(const MessageInterface&) = default;
    MessageInterface& operator=(const MessageInterface&) = default;
};

// Sent by the window towards the leaves. The region says which nodes it
// concerns: a point for the mouse, a rectangle for drawing, WHOLE_AREA for all.
class MessageDown : public MessageInterface
{
public:
    const Rect& get_region() const { return _region; }

protected:
    explicit MessageDown(const Rect& region) : _region(region) {}

private:
    Rect _region;
};

// Sent by a control towards the window, passed unchanged from parent to parent.
class MessageUp : public MessageInterface
{
protected:
    MessageUp() = default;
};

// Answers of handle_message: 0 lets a dispatch loop go on, anything else stops
// it; -1 on an up message means that nobody could handle it.
constexpr int kNotHandled = 0;
constexpr int kRefused = -1;

}  // namespace gadu
