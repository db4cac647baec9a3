#pragma once

#include "sys/FpuModeGuard.h"

namespace lumo
{

// One call from a host into an instance of ours, whatever the host interface:
// it runs with our floating-point modes and stops every exception at the
// boundary, since a host must never see one. Without an instance, or when the
// call fails, the host gets the neutral answer.
template <class Instance, class Result, class Call>
Result call_from_host(Instance* self, sys::FpuModeGuard::Denormals denormals, Result neutral, Call call)
{
    if (self == nullptr)
    {
        return neutral;
    }
    sys::FpuModeGuard guard(denormals);
    try
    {
        return call(*self);
    }
    catch (...)
    {
        return neutral;
    }
}

}  // namespace lumo
