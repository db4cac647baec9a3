#include "lumo/gui/MetaControl.h"

#include "gadu/ControlInterface.h"
#include "lumo/NormalizedParamInterface.h"
#include "lumo/gui/ListenerBase.h"

namespace lumo
{

void MetaControl::bind(gadu::ControlInterface* control, ListenerBase* listener)
{
    _control = control;
    _listener = listener;
    if (control == nullptr || listener == nullptr)
    {
        return;
    }
    const auto& listeners = control->use_listeners();
    if (listeners.empty() || listeners.front() != listener)
    {
        control->set_listener(listener);
    }
}

NormalizedParamInterface* MetaControl::use_param() const
{
    return _listener != nullptr ? _listener->use_param() : nullptr;
}

void MetaControl::update(double value, std::int32_t level)
{
    if (_control != nullptr)
    {
        _control->set_value_from_param(value, level);
    }
}

void MetaControl::refresh()
{
    if (_listener != nullptr)
    {
        _listener->refresh();
    }
}

}  // namespace lumo
