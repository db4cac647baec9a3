#include "lumo/gui/ListenerBase.h"

#include "gadu/ControlInterface.h"
#include "lumo/HostGuiInterface.h"
#include "lumo/NormalizedParamInterface.h"

namespace lumo
{

void ListenerBase::bind(int index, NormalizedParamInterface* param)
{
    _index = param != nullptr ? index : -1;
    _param = param;
}

void ListenerBase::refresh()
{
    gadu::ControlInterface* control = use_control();
    if (control != nullptr && _param != nullptr)
    {
        control->set_value_from_param(_param->get_norm(), 1);
    }
}

bool ListenerBase::check(std::int32_t level)
{
    return !is_bound() || _host->is_free(_index, level);
}

void ListenerBase::begin(std::int32_t level)
{
    if (is_bound())
    {
        _host->take(_index, level);
    }
}

void ListenerBase::end(std::int32_t level)
{
    if (is_bound())
    {
        _host->release(_index, level);
    }
}

double ListenerBase::value(double value, std::int32_t level)
{
    if (is_bound())
    {
        _host->set_and_report_param(_index, static_cast<float>(value), level);
    }
    return value;
}

}  // namespace lumo
