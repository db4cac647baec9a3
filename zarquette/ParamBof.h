#pragma once

#include "zarquette/ParamPercent.h"

namespace zarquette
{

// Share of the recordings that feeds the loop engine instead of the output.
class ParamBof : public ParamPercent
{
public:
    ParamBof() : ParamPercent("Bof") {}
};

}  // namespace zarquette
