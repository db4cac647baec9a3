#pragma once

#include "basic/ConfKeyStreamInterface.h"

#include <memory>

namespace basic
{

// The value of a leaf key: a string or a list.
class ConfKeyContentInterface : public ConfKeyStreamInterface
{
public:
    ~ConfKeyContentInterface() override = default;

    // A new deep copy of the same kind, owned by the caller.
    virtual std::unique_ptr<ConfKeyContentInterface> clone() const = 0;

protected:
    ConfKeyContentInterface() = default;
    ConfKeyContentInterface(const ConfKeyContentInterface&) = default;
    ConfKeyContentInterface& operator=(const ConfKeyContentInterface&) = default;
};

}  // namespace basic
