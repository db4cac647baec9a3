#pragma once

#include "zarquette/ParamPercent.h"

namespace zarquette
{

// Density, temper and pan spread of the recordings.
class ParamOignons : public ParamPercent
{
public:
    ParamOignons() : ParamPercent("Oignons") {}
};

}  // namespace zarquette
