#include "lumo/NormalizedParamInterface.h"

#include "lumo/NotifiedInterface.h"

namespace lumo
{

void NormalizedParamInterface::init(double nat_default, int priority)
{
    const auto n = static_cast<float>(nat_to_norm(nat_default));
    nat.store(nat_default, std::memory_order_relaxed);
    norm.store(n, std::memory_order_relaxed);
    default_norm = n;
    second = 0.0f;
    automation_priority = priority;
}

double NormalizedParamInterface::get_nat(int /*unused*/) const
{
    return get_nat_value();
}

float NormalizedParamInterface::get_second(int /*unused*/) const
{
    return second;
}

void NormalizedParamInterface::set_norm_value(float value)
{
    norm.store(value, std::memory_order_relaxed);
    nat.store(norm_to_nat(value), std::memory_order_relaxed);
    update();
    notify_listener();
}

void NormalizedParamInterface::set_nat_value(double value)
{
    nat.store(value, std::memory_order_relaxed);
    norm.store(static_cast<float>(nat_to_norm(value)), std::memory_order_relaxed);
    update();
    notify_listener();
}

void NormalizedParamInterface::notify_listener()
{
    if (NotifiedInterface* l = use_listener())
    {
        l->notify(*this);
    }
}

}  // namespace lumo
