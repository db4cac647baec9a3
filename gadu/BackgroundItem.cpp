#include "gadu/BackgroundItem.h"

#include "gadu/GraphicMessage.h"

namespace gadu
{

std::int32_t BackgroundItem::dispatch_down(const MessageInterface& message)
{
    const auto* redraw = dynamic_cast<const Redraw*>(&message);
    if (redraw != nullptr)
    {
        _picture.draw(redraw->get_region().moved(-std::int64_t{get_x()}, -std::int64_t{get_y()}),
                      *redraw->use_buffer());
    }
    return 0;
}

}  // namespace gadu
