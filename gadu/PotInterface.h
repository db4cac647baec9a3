#pragma once

#include "gadu/ControlInterface.h"

namespace gadu
{

class PotBehaviour;

// A control turned by the mouse: its drag, jog and smoothing live in a
// PotBehaviour, which sends its capture and timer requests up through the pot
// and sets the pot's value.
class PotInterface : public ControlInterface
{
public:
    virtual PotBehaviour& use_behaviour() = 0;
    virtual const PotBehaviour& use_behaviour() const = 0;
};

}  // namespace gadu
