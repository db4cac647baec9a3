#pragma once

#include "gadu/SPTreeNodeInterface.h"

namespace gadu
{

// A node that only paints: it lies under every control and takes no input.
class BackgroundNodeInterface : public SPTreeNodeInterface
{
protected:
    BackgroundNodeInterface() = default;
};

}  // namespace gadu
