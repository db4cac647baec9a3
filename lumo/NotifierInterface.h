#pragma once

namespace lumo
{

// Base of everything that tells listeners about changes (every parameter).
class NotifierInterface
{
public:
    virtual ~NotifierInterface() = default;
};

}  // namespace lumo
