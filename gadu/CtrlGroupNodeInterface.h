#pragma once

#include "gadu/SPTreeNodeInterface.h"

namespace gadu
{

// A node that holds controls and further groups.
class CtrlGroupNodeInterface : public SPTreeNodeInterface
{
protected:
    CtrlGroupNodeInterface() = default;
};

}  // namespace gadu
