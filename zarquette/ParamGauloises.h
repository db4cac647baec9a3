#pragma once

#include "zarquette/ParamPercent.h"

namespace zarquette
{

// Level of the recordings.
class ParamGauloises : public ParamPercent
{
public:
    ParamGauloises() : ParamPercent("Gauloises") {}
};

}  // namespace zarquette
