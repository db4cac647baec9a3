#pragma once

namespace lumo
{

class NotifierInterface;

// Receiver of change notifications.
class NotifiedInterface
{
public:
    virtual ~NotifiedInterface() = default;
    virtual void notify(NotifierInterface& notifier) = 0;
};

}  // namespace lumo
