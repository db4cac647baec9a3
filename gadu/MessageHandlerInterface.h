#pragma once

#include "gadu/MessageInterface.h"

#include <cstdint>

namespace gadu
{

// Anything a message can be sent to: the nodes of the tree, the controls and
// the window at the end of every up path.
class MessageHandlerInterface
{
public:
    virtual ~MessageHandlerInterface() = default;

    // 0: not handled, a dispatch loop goes on; anything else stops it.
    virtual std::int32_t handle_message(const MessageInterface& message) = 0;
};

}  // namespace gadu
