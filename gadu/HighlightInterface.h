#pragma once

#include <cstdint>

namespace gadu
{

class Picture;

// A control's pictures per highlight state (normal, pressed, hovered and so
// on, as the control defines them), at most one each.
class HighlightInterface
{
public:
    virtual ~HighlightInterface() = default;

    virtual void set_highlight_picture(std::int32_t state, const Picture& picture) = 0;
    // The state has no picture afterwards.
    virtual void clear_highlight_picture(std::int32_t state) = 0;
    virtual bool has_highlight_picture(std::int32_t state) const = 0;
    // An empty picture for a state without one.
    virtual const Picture& use_highlight_picture(std::int32_t state) const = 0;
};

}  // namespace gadu
