#pragma once

#include "zarquette/ParamPercent.h"

namespace zarquette
{

// Echo feedback and drive of the loop engine.
class ParamVinRouge : public ParamPercent
{
public:
    ParamVinRouge() : ParamPercent("Vin Rouge") {}
};

}  // namespace zarquette
