#pragma once

#include "gadu/MessageHandlerInterface.h"
#include "gadu/Rect.h"

#include <cstdint>
#include <limits>

namespace gadu
{

// A node of the tree between the window and the controls: a group of controls
// or a background. Up messages pass through to the parent; down messages go
// to dispatch_down, which each kind of node routes its own way.
class SPTreeNodeInterface : public MessageHandlerInterface
{
public:
    // Not yet placed: far away from every point a mouse message can name.
    static constexpr std::int32_t kUnplaced = std::numeric_limits<std::int32_t>::min();

    std::int32_t handle_message(const MessageInterface& message) override;
    virtual void set_position(std::int32_t x, std::int32_t y);
    virtual std::int32_t dispatch_down(const MessageInterface& message) = 0;

    std::int32_t get_x() const { return _x; }
    std::int32_t get_y() const { return _y; }
    bool is_visible() const { return _visible != 0; }

    // The next node towards the window; null for a root, whose up messages
    // the window receives directly.
    void set_parent(MessageHandlerInterface* parent) { _parent = parent; }
    MessageHandlerInterface* use_parent() const { return _parent; }

    const Rect& get_extent() const { return _extent; }
    void set_extent(const Rect& extent) { _extent = extent; }

protected:
    SPTreeNodeInterface() = default;

    // The parent's answer, or -1 when there is nobody to ask.
    std::int32_t pass_up(const MessageInterface& message) const;

private:
    std::int32_t _x = kUnplaced;
    std::int32_t _y = kUnplaced;
    MessageHandlerInterface* _parent = nullptr;
    std::uint8_t _visible = 0;
    // Everything a 32-bit pixel coordinate shifted by a few bits can reach.
    Rect _extent{-536870912, -536870912, 536870911, 536870911};
};

}  // namespace gadu
