#pragma once

#include "sys/FpuModeGuard.h"

namespace lumo
{

// One call from an LV2 host into an instance of ours (a plug-in or an
// editor): it runs with our floating-point modes, and no exception reaches
// the host; a null instance or a failed call gives the neutral answer.
template <class Instance, class Result, class Call>
Result call_instance(void* instance, sys::FpuModeGuard::Denormals denormals, Result neutral, Call call)
{
    auto* self = static_cast<Instance*>(instance);
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
