#include "gadu/SPTreeNodeInterface.h"

#include "gadu/ShowObject.h"

namespace gadu
{

std::int32_t SPTreeNodeInterface::handle_message(const MessageInterface& message)
{
    if (dynamic_cast<const MessageUp*>(&message) != nullptr)
    {
        return pass_up(message);
    }
    if (const auto* show = dynamic_cast<const ShowObject*>(&message))
    {
        _visible = show->is_visible() ? 1 : 0;
    }
    return dispatch_down(message);
}

void SPTreeNodeInterface::set_position(std::int32_t x, std::int32_t y)
{
    _x = x;
    _y = y;
}

std::int32_t SPTreeNodeInterface::pass_up(const MessageInterface& message) const
{
    return _parent != nullptr ? _parent->handle_message(message) : kRefused;
}

}  // namespace gadu
