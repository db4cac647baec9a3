#include "gadu/CtrlGroupItem.h"

#include "gadu/ControlInterface.h"
#include "gadu/MouseMessage.h"
#include "gadu/ShowObject.h"

#include <algorithm>

namespace gadu
{

namespace
{

// Delivers the message to the children that accept it, first to last or, top
// down, last to first, until one answers or the list changes. A change ends the
// walk right after the child that made it, so the indices stay valid for the
// whole walk even when the list's storage moves.
template <typename Child, typename Accept>
std::int32_t walk(const std::vector<Child*>& list, bool& changed, bool top_down, const MessageInterface& message,
                  Accept accept)
{
    changed = false;
    const std::size_t count = list.size();
    for (std::size_t k = 0; k < count; ++k)
    {
        Child* child = list[top_down ? count - 1 - k : k];
        if (!accept(*child))
        {
            continue;
        }
        const std::int32_t result = child->handle_message(message);
        if (result != 0 || changed)
        {
            return result;
        }
    }
    return 0;
}

}  // namespace

std::int32_t CtrlGroupItem::add_control(ControlInterface& control)
{
    control.attach_to_group(*this);
    _controls.push_back(&control);
    _controls_changed = true;
    control.handle_message(ShowObject(is_visible()));
    return get_control_count();
}

std::int32_t CtrlGroupItem::add_group(CtrlGroupNodeInterface& group)
{
    group.set_parent(this);
    _groups.push_back(&group);
    _groups_changed = true;
    return static_cast<std::int32_t>(_groups.size());
}

bool CtrlGroupItem::remove_control(ControlInterface& control)
{
    const auto it = std::find(_controls.begin(), _controls.end(), &control);
    if (it == _controls.end())
    {
        return false;
    }
    _controls.erase(it);
    _controls_changed = true;
    control.detach_from_group();
    return true;
}

void CtrlGroupItem::set_position(std::int32_t x, std::int32_t y)
{
    SPTreeNodeInterface::set_position(x, y);
    for (CtrlGroupNodeInterface* group : _groups)
    {
        group->set_position(x, y);
    }
    for (ControlInterface* control : _controls)
    {
        control->follow_group(x, y);
    }
}

std::int32_t CtrlGroupItem::dispatch_down(const MessageInterface& message)
{
    const auto* down = dynamic_cast<const MessageDown*>(&message);
    if (down == nullptr)
    {
        return 0;
    }
    const Rect& region = down->get_region();
    const auto any_group = [](const CtrlGroupNodeInterface&) { return true; };
    const auto hit_controls = [&](const ControlInterface& control) { return delivers_to(control, region); };
    if (dynamic_cast<const MouseMessage*>(&message) != nullptr)
    {
        const std::int32_t result = walk(_controls, _controls_changed, true, message, hit_controls);
        return result != 0 ? result : walk(_groups, _groups_changed, true, message, any_group);
    }
    const std::int32_t result = walk(_groups, _groups_changed, false, message, any_group);
    if (result != 0 || _controls.empty())
    {
        return result;
    }
    return walk(_controls, _controls_changed, false, message, hit_controls);
}

// A point goes to the controls that it hits; any other region to the controls
// whose hit rectangle overlaps it.
bool CtrlGroupItem::delivers_to(const ControlInterface& control, const Rect& region) const
{
    if (is_point(region))
    {
        return control.hit_test(region.x1, region.y1);
    }
    const Rect placed =
        control.get_hit_rect().moved(control.get_rel_x(), control.get_rel_y()).moved(get_x(), get_y());
    return overlaps(placed, region);
}

}  // namespace gadu
