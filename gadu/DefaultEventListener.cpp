#include "gadu/DefaultEventListener.h"

namespace gadu
{

double DefaultEventListener::forward(double value, std::int32_t level)
{
    return _target != nullptr ? _target->forward(value, level) : value;
}

void DefaultEventListener::before_message(const MessageInterface& message)
{
    if (_target != nullptr)
    {
        _target->before_message(message);
    }
}

void DefaultEventListener::after_message(const MessageInterface& message)
{
    if (_target != nullptr)
    {
        _target->after_message(message);
    }
}

}  // namespace gadu
