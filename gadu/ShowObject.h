#pragma once

#include "gadu/MessageInterface.h"

#include <cstdint>

namespace gadu
{

// Makes every node it reaches visible or hidden: a group sends it to a control
// it adds, the window sends it hidden when it closes.
class ShowObject : public MessageDown
{
public:
    explicit ShowObject(bool visible) : MessageDown(WHOLE_AREA), _visible(visible ? 1 : 0) {}
    bool is_visible() const { return _visible != 0; }

private:
    std::uint8_t _visible;
};

// The window is closing: nodes let go of what they hold of it.
class Disconnecting : public MessageDown
{
public:
    Disconnecting() : MessageDown(WHOLE_AREA) {}
};

}  // namespace gadu
