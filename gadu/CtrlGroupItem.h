#pragma once

#include "gadu/CtrlGroupNodeInterface.h"

#include <cstdint>
#include <vector>

namespace gadu
{

class ControlInterface;

// A group of controls and child groups. Mouse messages go top-down (the last
// added lies on top) and stop at the first taker; drawing and visibility go
// bottom-up to every node concerned. Children are not owned: the editor that
// builds the screen keeps them.
class CtrlGroupItem : public CtrlGroupNodeInterface
{
public:
    // Returns the new number of controls. The control becomes visible when the
    // group is.
    std::int32_t add_control(ControlInterface& control);
    // Returns the new number of child groups.
    std::int32_t add_group(CtrlGroupNodeInterface& group);
    // Returns whether the control was in the group.
    bool remove_control(ControlInterface& control);

    void set_position(std::int32_t x, std::int32_t y) override;
    std::int32_t dispatch_down(const MessageInterface& message) override;

    std::int32_t get_control_count() const { return static_cast<std::int32_t>(_controls.size()); }

private:
    bool delivers_to(const ControlInterface& control, const Rect& region) const;

    std::vector<CtrlGroupNodeInterface*> _groups;
    std::vector<ControlInterface*> _controls;
    // Raised when a list changes; a walk over that list ends after the child
    // that changed it, so that no child is skipped or visited twice.
    bool _groups_changed = false;
    bool _controls_changed = false;
};

}  // namespace gadu
