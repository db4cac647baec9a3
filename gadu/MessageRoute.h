#pragma once

#include "gadu/MessageInterface.h"

#include <cstdint>

namespace gadu
{

// One rung of a message ladder: when the message is an M, result becomes the
// slot's answer (0 without calling it unless run) and the answer is true.
// Ladders chain rungs with || so that the first matching type wins.
template <typename M, typename Owner>
bool route_as(const MessageInterface& message, std::int32_t& result, Owner& owner,
              std::int32_t (Owner::*slot)(const M&), bool run = true)
{
    const auto* typed = dynamic_cast<const M*>(&message);
    if (typed == nullptr)
    {
        return false;
    }
    result = run ? (owner.*slot)(*typed) : 0;
    return true;
}

}  // namespace gadu
